#include "cli/run.h"

int main(int argc, char** argv)
{
    return kestrova::RunTerminal({argv + (argc > 0 ? 1 : 0), argv + argc}, KESTROVA_VERSION);
}
