#include "platform/program_location.h"

#include <system_error>

std::filesystem::path ProgramDirectory() {
    std::error_code ec;
    std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    if (ec || exe.empty()) return std::filesystem::current_path(ec);
    return exe.parent_path();
}
