#include "ui/program.h"

int main(int argc, char** argv)
{
    return kestrova::RunWindows(argc, argv);
}
