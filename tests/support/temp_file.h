#pragma once

#include <filesystem>
#include <random>
#include <string>

#include <samples/chart_writer.h>

/// A new empty folder; gone, with all that is in it, when the object goes.
class TempFolder {
public:
    TempFolder() : path_(std::filesystem::temp_directory_path() / unique_name()) {
        std::filesystem::create_directories(path_);
    }
    ~TempFolder() { std::filesystem::remove_all(path_); }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::string file(const std::string& name) const { return (path_ / name).string(); }

    /// Writes a file of this folder and gives its path.
    std::string write(const std::string& name, const std::string& bytes) const {
        samples::write_file(file(name), bytes);
        return file(name);
    }

private:
    static std::string unique_name() {
        std::random_device random;
        return "zellap10_test_" + std::to_string(random()) + "_" + std::to_string(random());
    }

    std::filesystem::path path_;
};
