// A folder for one test program's files: made at first use, removed with all that is in it at
// the end. Every process has its own, so tests may run side by side.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

struct TestFolder {
    std::string path;
    pid_t owner = getpid(); // not a child that a death test makes

    TestFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "testXXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            std::abort();
        path = pattern;
    }
    ~TestFolder() {
        std::error_code ignored;
        if (getpid() == owner)
            std::filesystem::remove_all(path, ignored);
    }
    TestFolder(const TestFolder &) = delete;
    TestFolder &operator=(const TestFolder &) = delete;
};

// The path of a file in that folder.
inline std::string testPath(const std::string &name) {
    static const TestFolder folder;
    return folder.path + "/" + name;
}
