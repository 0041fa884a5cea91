#include <iostream>
#include <string>
#include <vector>

#include "shell/command_line.h"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const int status = titron::shell::runCommandLine(arguments, std::cout, std::cerr);
    std::cout.flush();
    return status;
}
