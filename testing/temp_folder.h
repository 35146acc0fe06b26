#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

#include <samples/chart_writer.h>

/// A new empty folder, which the destructor removes with everything in it.
class TempFolder {
public:
    TempFolder() : path_(std::filesystem::temp_directory_path() / unique_name()) {
        std::filesystem::create_directories(path_);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::string file(const std::string& name) const { return (path_ / name).string(); }

    /// Writes a file in this folder and returns its path. An existing file is removed first, because some
    /// file systems flush a file to disk when it is overwritten.
    std::string write(const std::string& name, const std::string& bytes) const {
        remove(name);
        samples::write_file(file(name), bytes);
        return file(name);
    }

    void remove(const std::string& name) const {
        std::error_code ignored;
        std::filesystem::remove(path_ / name, ignored);
    }

private:
    static std::string unique_name() {
        std::random_device random;
        return "zellap10_test_" + std::to_string(random()) + "_" + std::to_string(random());
    }

    std::filesystem::path path_;
};
