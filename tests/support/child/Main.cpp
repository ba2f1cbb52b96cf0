// A program for tests of child processes; its first argument says what it does.
#include <chrono>
#include <cstddef>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/FileSystem.h"
#include "tests/support/child/Grandchild.h"

namespace {

using Arguments = std::vector<std::string>;

/// echo ARGUMENT...: each in brackets.
int echo(const Arguments& arguments) {
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        std::cout << '[' << arguments[i] << ']';
    }
    return 0;
}

/// flood BYTES: that many to each pipe.
int flood(const Arguments& arguments) {
    const std::string block(1U << 16U, 'x');
    for (std::size_t left = std::stoul(arguments.at(1)); left > 0; left -= block.size()) {
        std::cout << block;
        std::cerr << block;
    }
    return 0;
}

/// hold FILE: locks it and says so; never ends.
int hold(const Arguments& arguments) {
    int error = 0;
    std::unique_ptr<platform::FileLock> lock;
    while (!lock && error == 0) { // another program may have it for a moment
        lock = platform::nativeFileSystem().lockFile(arguments.at(1), error);
    }
    std::cout << "held" << std::flush;
    for (;;) {
        std::this_thread::sleep_for(std::chrono::hours(1));
    }
}

/// spawn FILE: has another program lock it, ends itself with 3 once that has begun.
int spawn(const Arguments& arguments) {
    child::startHolding(arguments.front(), arguments.at(1));
    int error = 0;
    while (platform::nativeFileSystem().lockFile(arguments.at(1), error) || error != 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return 3;
}

/// 7 when standard input is empty.
int read(const Arguments& /*arguments*/) {
    return std::cin.get() == std::char_traits<char>::eof() ? 7 : 1;
}

} // namespace

int main(int count, char** values) {
    const std::map<std::string_view, int (*)(const Arguments&)> commands{
        {"echo", echo}, {"flood", flood}, {"hold", hold}, {"read", read}, {"spawn", spawn}};
    Arguments arguments(values, values + count);
    const auto command = commands.find(count > 1 ? values[1] : "");
    if (command == commands.end()) {
        return 2;
    }
    arguments.erase(arguments.begin() + 1);
    return command->second(arguments);
}
