// What the reader's tests share: bytes as an open file, bytes as a loaded and checked object.
#pragma once

#include "reader/lwo2.h"
#include "tests/support/checkObject.h"
#include "tests/support/chunkWriter.h"
#include "tests/support/keptMemory.h"
#include "tests/support/memoryFile.h"
#include "tests/support/testFolder.h"

#include <gtest/gtest.h>

#include <memory>

struct FileCloser {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// A file of these bytes, at its start, with flen at 0.
inline File openBytes(const std::string &bytes) {
    File file(std::tmpfile());
    std::fwrite(bytes.data(), 1, bytes.size(), file.get());
    std::rewind(file.get());
    set_flen(0);
    return file;
}

struct ObjectDeleter {
    void operator()(st_lwObject *object) const { freeObjectWhole(object); }
};
using Object = std::unique_ptr<st_lwObject, ObjectDeleter>;

// What a failed load reports; as it is here when it reports nothing.
struct Failure {
    unsigned id = 0;
    int position = -1;
};

inline Object load(const std::string &bytes, Failure *failure = nullptr) {
    const std::string path = memoryFile(bytes);
    Failure ignored;
    Failure &reported = failure == nullptr ? ignored : *failure;
    Object object(lwGetObject(path.c_str(), &reported.id, &reported.position));
    EXPECT_EQ(object == nullptr ? "" : objectProblem(*object), "");
    return object;
}

inline Object loadLWO2(const std::string &chunks, Failure *failure = nullptr) {
    return load(form("LWO2", chunks), failure);
}
