// SPDX-License-Identifier: MIT
#include "app/program.h"

int main(int argc, char *argv[])
{
    return runProgram(argc, argv);
}
