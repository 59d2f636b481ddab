// Numbers are taken apart: which kind of damage, at which place, with which value.
#include "fuzz/damages.h"

#include <cstdint>

constexpr std::size_t BYTE_CHANGES = 5;
constexpr std::size_t SIZE_CHANGES = 12;
constexpr std::size_t MOVES = 4;                                // drop, double, swap, nest
constexpr std::size_t PIECE_CHANGES = SIZE_CHANGES + 2 * MOVES; // sizes around corrected or not

// ------------------------------------------------------------------------- pieces

static std::size_t numberAt(const std::string &bytes, std::size_t at, std::size_t size) {
    std::size_t value = 0;
    for (std::size_t i = 0; i < size && at + i < bytes.size(); i++)
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

static void putNumber(std::string *bytes, std::size_t at, std::size_t size, std::size_t value) {
    for (std::size_t i = 0; i < size && at + i < bytes->size(); i++)
        (*bytes)[at + i] = static_cast<char>(value >> 8 * (size - 1 - i) & 0xFF);
}

static std::size_t sizeOf(const st_piece &piece) {
    return piece.headerSize + piece.bodySize;
}

static void listPieces(st_damages *damages, std::size_t from, std::size_t end,
                       std::size_t headerSize, std::size_t parent) {
    while (from + headerSize <= end) {
        const std::size_t size = numberAt(damages->whole, from + 4, headerSize - 4);
        const st_piece piece = {from, headerSize, size + size % 2, parent};
        if (from + sizeOf(piece) > end)
            return;
        damages->pieces.push_back(piece);
        from += sizeOf(piece);
    }
}

static std::size_t behindString(const std::string &bytes, std::size_t at) {
    const std::size_t length = bytes.find('\0', at) + 1 - at;
    return at + length + length % 2;
}

// Where the sub-chunks of a chunk begin; at its end when it has none.
static std::size_t firstSubChunk(const std::string &whole, const st_piece &chunk) {
    const std::string id = whole.substr(chunk.start, 4);
    const std::size_t body = chunk.start + chunk.headerSize;
    if (id == "CLIP")
        return body + 4;
    if (id == "ENVL")
        return body + 2;
    if (id == "TMAP")
        return body;
    if (id == "SURF")
        return behindString(whole,
                            whole.compare(8, 4, "LWOB") == 0 ? body : behindString(whole, body));
    return body + chunk.bodySize;
}

// Lists what lies directly in a piece. A block has a header of its own, with its type, its size, a
// string and sub-chunks.
static void listWithin(st_damages *damages, std::size_t parent) {
    const std::string &whole = damages->whole;
    const st_piece piece = damages->pieces[parent];
    const std::size_t end = piece.start + sizeOf(piece);
    std::size_t from = firstSubChunk(whole, piece);
    if (whole.compare(piece.start, 4, "BLOK") == 0) {
        const std::size_t header = piece.start + piece.headerSize + 6;
        from = header + numberAt(whole, header - 2, 2);
        listPieces(damages, behindString(whole, header), from, 6, parent);
    }
    listPieces(damages, from, end, 6, parent);
}

st_damages listDamages(const std::string &whole) {
    st_damages damages = {whole, {}, 0};
    if (whole.compare(0, 4, "FORM") == 0) {
        damages.pieces.push_back({0, 8, whole.size() - 8, 0});
        listPieces(&damages, 12, whole.size(), 8, 0);
        for (std::size_t i = 1; i < damages.pieces.size(); i++)
            listWithin(&damages, i);
    }
    damages.count = whole.size() * (1 + BYTE_CHANGES) + damages.pieces.size() * PIECE_CHANGES;
    return damages;
}

// ------------------------------------------------------------------------- damages

static std::string changeByte(std::string bytes, std::size_t at, std::size_t change) {
    const char values[BYTE_CHANGES] = {static_cast<char>(bytes[at] + 1),
                                       static_cast<char>(bytes[at] - 1), 0, '\x80', '\xFF'};
    bytes[at] = values[change];
    return bytes;
}

static std::string changeSize(std::string bytes, const st_piece &piece, std::size_t change) {
    const std::size_t n = numberAt(bytes, piece.start + 4, piece.headerSize - 4);
    const std::size_t sizes[SIZE_CHANGES] = {0,          1,          n - 2,      n - 1,
                                             n + 1,      n + 2,      n / 2,      2 * n + 8,
                                             0x7FFF7FFF, 0x80008000, 0xFFFEFFFE, 0xFFFFFFFF};
    putNumber(&bytes, piece.start + 4, piece.headerSize - 4, sizes[change]);
    return bytes;
}

// What stands in the place of a piece after it is moved about; next is what followed it.
static std::string moved(const std::string &piece, const std::string &next, std::size_t headerSize,
                         std::size_t move) {
    switch (move) {
    case 0: return next;
    case 1: return piece + piece + next;
    case 2: return next + piece;
    default: {
        std::string outer = piece.substr(0, headerSize);
        putNumber(&outer, 4, headerSize - 4, piece.size());
        return outer + piece + next;
    }
    }
}

static std::string movePiece(const st_damages &damages, std::size_t index, std::size_t move,
                             bool corrected) {
    const st_piece &piece = damages.pieces[index];
    const std::size_t end = piece.start + sizeOf(piece);
    std::size_t nextSize = 0;
    if (index + 1 < damages.pieces.size() && damages.pieces[index + 1].start == end)
        nextSize = sizeOf(damages.pieces[index + 1]);
    std::string bytes = damages.whole;
    const std::string now = moved(bytes.substr(piece.start, sizeOf(piece)),
                                  bytes.substr(end, nextSize), piece.headerSize, move);
    bytes.replace(piece.start, sizeOf(piece) + nextSize, now);
    // Those around it lie before it, so they are where they were.
    for (std::size_t at = piece.parent; corrected && index != 0; at = damages.pieces[at].parent) {
        const st_piece &around = damages.pieces[at];
        putNumber(&bytes, around.start + 4, around.headerSize - 4,
                  around.bodySize + now.size() - sizeOf(piece) - nextSize);
        if (at == 0)
            break;
    }
    return bytes;
}

std::string damaged(const st_damages &damages, std::size_t number) {
    const std::size_t size = damages.whole.size();
    if (number < size)
        return damages.whole.substr(0, number);
    number -= size;
    if (number < size * BYTE_CHANGES)
        return changeByte(damages.whole, number / BYTE_CHANGES, number % BYTE_CHANGES);
    number -= size * BYTE_CHANGES;
    const std::size_t index = number / PIECE_CHANGES;
    const std::size_t change = number % PIECE_CHANGES;
    if (change < SIZE_CHANGES)
        return changeSize(damages.whole, damages.pieces[index], change);
    return movePiece(damages, index, (change - SIZE_CHANGES) % MOVES,
                     change >= SIZE_CHANGES + MOVES);
}
