// Shared frame of the fuzz targets: one temporary directory per process for
// the files a parser needs a path for, a headless progress interface, and the
// run of one input with every clean refusal caught.
#pragma once

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "core/general_exception.h"
#include "core/headless_pg_ctrl.h"
#include "core/pg_ctrl.h"

class CFuzzEnvironment {
public:
    CFuzzEnvironment() {
        Dir = std::filesystem::temp_directory_path() / ("gw_fuzz_" + std::to_string(::getpid()));
        std::filesystem::create_directories(Dir);
    }
    ~CFuzzEnvironment() {
        std::error_code ec;
        std::filesystem::remove_all(Dir, ec);
    }
    // Writes bytes to a file of the given name in the process's directory.
    std::filesystem::path Write(const std::string& name, const uint8_t* data, std::size_t size) {
        std::filesystem::path path = Dir / name;
        std::ofstream(path, std::ios::binary | std::ios::trunc).write(reinterpret_cast<const char*>(data),
                                                                      static_cast<std::streamsize>(size));
        return path;
    }
    std::filesystem::path Write(const std::string& name, const std::string& text) {
        return Write(name, reinterpret_cast<const uint8_t*>(text.data()), text.size());
    }
    // Runs one parse: a refusal (the program's exception or a cancellation) is
    // the expected answer to a bad file; anything else escapes and is a finding.
    template <class F>
    void Run(F&& parse) {
        PgCtrl.Statuses.clear();
        PgCtrl.Warnings.clear();
        PgCtrl.ResetProgress();
        try {
            parse();
        } catch (const CGeneralException& e) {
            if (e.Message.empty()) __builtin_trap();  // every refusal says why
        } catch (int) {
        }
    }

    CHeadlessPgCtrl PgCtrl;
    CPgCtrlScope PgScope{PgCtrl};
    std::filesystem::path Dir;
};

// The one environment of the process, made on first use.
inline CFuzzEnvironment& FuzzEnvironment() {
    static CFuzzEnvironment env;
    return env;
}
