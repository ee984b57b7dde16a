#include "ui/main/program.h"

int main(int argc, char** argv)
{
    return kestrova::RunWindows(argc, argv);
}
