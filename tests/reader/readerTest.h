// What the reader's tests share: bytes as an open file, as a record, as a loaded and checked
// object.
#pragma once

#include "reader/lwo2.h"
#include "tests/support/checkObject.h"
#include "tests/support/chunkWriter.h"
#include "tests/support/keptMemory.h"
#include "tests/support/memoryFile.h"
#include "tests/support/numbers.h"
#include "tests/support/testFolder.h"
#include "tests/support/there.h"

#include <gtest/gtest.h>

using File = Owned<std::FILE>;
using Object = Owned<st_lwObject>;

// A file of these bytes, at its start, with flen at 0.
inline File openBytes(const std::string &bytes) {
    File file(std::tmpfile());
    std::fwrite(bytes.data(), 1, bytes.size(), file.get());
    std::rewind(file.get());
    set_flen(0);
    return file;
}

// The record that the bytes are, of which cut are not said to belong to it.
template <typename Record>
Owned<Record> readRecord(Record *(*get)(std::FILE *, int), const std::string &bytes, int cut = 0) {
    return Owned<Record>(get(openBytes(bytes).get(), static_cast<int>(bytes.size()) - cut));
}

// What a failed load reports; as it is here when it reports nothing.
struct Failure {
    unsigned id = 0;
    int position = -1;
};

inline Object load(const std::string &bytes, Failure *failure = nullptr) {
    Failure ignored;
    auto &[id, position] = failure == nullptr ? ignored : *failure;
    Object object(lwGetObject(memoryFile(bytes).c_str(), &id, &position));
    EXPECT_EQ(object == nullptr ? "" : objectProblem(*object), "");
    return object;
}

inline Object loadLWO2(const std::string &chunks, Failure *failure = nullptr) {
    return load(form("LWO2", chunks), failure);
}

// That loading fails, at the chunk and the position.
inline void expectFailure(const std::string &bytes, unsigned id, int position) {
    Failure failure;
    EXPECT_EQ(load(bytes, &failure), nullptr);
    EXPECT_EQ(numbers(failure.id, failure.position), numbers(id, position)) << bytes;
}

// Four points, two triangles that share the edge 1-3, in the plane z = 0:
//   1 --- 2
//   | \ B |
//   | A \ |
//   0 --- 3
inline const std::string square =
    chunk("PNTS", f4(0, 0, 0) + f4(0, 1, 0) + f4(1, 1, 0) + f4(1, 0, 0));
inline const std::string twoTriangles =
    chunk("POLS", "FACE" + u2(3) + vx(0) + vx(3) + vx(1) + u2(3) + vx(2) + vx(1) + vx(3));

inline std::string cutByOne(const std::string &bytes) {
    return bytes.substr(0, bytes.size() - 1);
}
