// serz "<source>" xml:"<target>" | bin:"<target>": the game's binary files to XML and back.
#include <iostream>
#include <string>
#include <vector>

#include "serz/serz_command.h"

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    return ferrolund::serz::RunSerzCommand(args, std::cerr);
}
