#include "tests/support/generatedModel.h"

#include "tests/support/chunkWriter.h"

#include <algorithm>
#include <cmath>
#include <vector>

// Two-byte indices reach no further.
constexpr int OLDER_POINTS = 0xFF00;

constexpr int RUN = 50; // polygons in a row that share a surface

struct Polygon {
    std::vector<int> points; // counted within the piece
    int surface;
};

struct Piece {
    int width; // points
    int height;
    std::vector<Polygon> polygons;
};

static std::string indexBytes(int index) {
    return vx(static_cast<unsigned>(index));
}

// 0 to 255, without pattern.
static int noise(int seed) {
    std::uint32_t bits = static_cast<std::uint32_t>(seed) * 2654435761U;
    bits = (bits ^ bits >> 15) * 2246822519U;
    return static_cast<int>(bits >> 24);
}

// ------------------------------------------------------------------------- polygons

static int pointAt(const Piece &piece, int column, int row) {
    return row % piece.height * piece.width + column % piece.width;
}

static void addPolygon(Piece *piece, int wanted, int surfaces, const std::vector<int> &points) {
    const int number = static_cast<int>(piece->polygons.size());
    if (number < wanted)
        piece->polygons.push_back({points, number / RUN % surfaces});
}

static void addCell(Piece *piece, int wanted, const ModelPlan &plan, int cell) {
    const int column = cell % piece->width;
    const int row = cell / piece->width;
    // Of four cells the plain ones make 20 corners, and each wider quad 4 more.
    const int extra = plan.corners - 5;
    const int widest = 1 + (cell % 4 + 1) * extra / 4 - cell % 4 * extra / 4;
    for (int stride = 1; stride <= widest; stride++) {
        const int a = pointAt(*piece, column, row);
        const int b = pointAt(*piece, column + stride, row);
        const int c = pointAt(*piece, column + stride, row + stride);
        const int d = pointAt(*piece, column, row + stride);
        if (stride > 1 || cell % 2 == 0) {
            addPolygon(piece, wanted, plan.surfaces, {a, b, c, d});
        } else {
            addPolygon(piece, wanted, plan.surfaces, {a, b, c});
            addPolygon(piece, wanted, plan.surfaces, {a, c, d});
        }
    }
}

static Piece makePiece(const ModelPlan &plan, int polygons) {
    const int polygonsOfFourCells = plan.corners + 1;
    const int cells = std::max(static_cast<int>(polygons * 4LL / polygonsOfFourCells), 4);
    Piece piece = {};
    piece.width = std::max(static_cast<int>(std::sqrt(cells)), 2);
    piece.height = (cells + piece.width - 1) / piece.width;
    // What rounding leaves over goes round once more.
    for (int cell = 0; static_cast<int>(piece.polygons.size()) < polygons; cell++)
        addCell(&piece, polygons, plan, cell);
    return piece;
}

// ---------------------------------------------------------------- chunks of a piece

// Hills with sharp valleys between them, roughened.
static std::string pointsChunk(const Piece &piece) {
    std::string body;
    for (int i = 0; i < piece.width * piece.height; i++) {
        const int column = i % piece.width;
        const int row = i / piece.width;
        const int hill = column % 23 * (22 - column % 23) + row % 31 * (30 - row % 31);
        body += f4(static_cast<float>(column));
        body += f4(static_cast<float>(row));
        body += f4(static_cast<float>(hill * 32 + noise(i)) / 1024.0F);
    }
    return chunk("PNTS", body);
}

static std::string polygonsChunk(const Piece &piece) {
    std::string body = "FACE";
    for (const Polygon &polygon : piece.polygons) {
        body += u2(static_cast<unsigned>(polygon.points.size()));
        for (const int point : polygon.points)
            body += indexBytes(point);
    }
    return chunk("POLS", body);
}

static std::string tagsChunk(const Piece &piece, const ModelPlan &plan, const std::string &type) {
    std::string body = type;
    for (int i = 0; i < static_cast<int>(piece.polygons.size()); i++) {
        const int surface = piece.polygons[static_cast<std::size_t>(i)].surface;
        body += indexBytes(i);
        body += indexBytes(type == "SURF" ? surface : i / RUN % std::min(plan.surfaces, 2));
    }
    return chunk("PTAG", body);
}

static std::string olderPolygonsChunk(const Piece &piece) {
    std::string body;
    for (const Polygon &polygon : piece.polygons) {
        body += u2(static_cast<unsigned>(polygon.points.size()));
        for (const int point : polygon.points)
            body += u2(static_cast<unsigned>(point));
        body += u2(static_cast<unsigned>(polygon.surface + 1));
    }
    return chunk("POLS", body);
}

static std::string surfaceName(int surface) {
    return "surface" + std::to_string(surface);
}

static std::string mapHeader(int surface) {
    return "TXUV" + u2(2) + s0(surfaceName(surface));
}

static std::string uvBytes(int seed) {
    return f4(static_cast<float>(noise(seed)) / 256.0F) +
           f4(static_cast<float>(noise(seed + 1)) / 256.0F);
}

// Map indices count from the layer's first point and polygon.
static std::string pointMapChunks(const Piece &piece, const ModelPlan &plan, int firstPoint) {
    const std::size_t count =
        static_cast<std::size_t>(piece.width) * static_cast<std::size_t>(piece.height);
    std::vector<std::vector<int>> users(static_cast<std::size_t>(plan.surfaces));
    std::vector<int> latest(count, -1); // surface that has taken the point last
    for (const Polygon &polygon : piece.polygons)
        for (const int point : polygon.points) {
            int &taken = latest[static_cast<std::size_t>(point)];
            if (taken != polygon.surface)
                users[static_cast<std::size_t>(polygon.surface)].push_back(point);
            taken = polygon.surface;
        }
    std::string chunks;
    for (int surface = 0; surface < plan.surfaces; surface++) {
        std::string body = mapHeader(surface);
        for (const int point : users[static_cast<std::size_t>(surface)]) {
            body += indexBytes(firstPoint + point);
            body += uvBytes(point);
        }
        chunks += chunk("VMAP", body);
    }
    return chunks;
}

static std::string cornerMapChunks(const Piece &piece, const ModelPlan &plan, int firstPoint,
                                   int firstPolygon) {
    std::vector<std::string> bodies(static_cast<std::size_t>(plan.surfaces));
    for (int surface = 0; surface < plan.surfaces; surface++)
        bodies[static_cast<std::size_t>(surface)] = mapHeader(surface);
    for (int i = 0; i < static_cast<int>(piece.polygons.size()); i += 4) {
        const Polygon &polygon = piece.polygons[static_cast<std::size_t>(i)];
        std::string &body = bodies[static_cast<std::size_t>(polygon.surface)];
        for (const int point : polygon.points) {
            body += indexBytes(firstPoint + point);
            body += indexBytes(firstPolygon + i);
            body += uvBytes(i + point);
        }
    }
    std::string chunks;
    for (const std::string &body : bodies)
        chunks += chunk("VMAD", body);
    return chunks;
}

// ------------------------------------------------------------------------ the model

static std::string newerPiece(const Piece &piece, const ModelPlan &plan, int firstPoint,
                              int firstPolygon) {
    std::string chunks = pointsChunk(piece) + polygonsChunk(piece) + tagsChunk(piece, plan, "SURF");
    if (plan.smoothGroups)
        chunks += tagsChunk(piece, plan, "SMGP");
    if (plan.pointMaps)
        chunks += pointMapChunks(piece, plan, firstPoint);
    if (plan.cornerMaps)
        chunks += cornerMapChunks(piece, plan, firstPoint, firstPolygon);
    return chunks;
}

static int pieceCount(const ModelPlan &plan, int polygons) {
    if (!plan.older)
        return plan.pieces;
    const int points = static_cast<int>(polygons * 4LL / (plan.corners + 1));
    return std::max(plan.pieces, points / (OLDER_POINTS / 2) + 1);
}

static std::string layerChunks(const ModelPlan &plan, int polygons) {
    std::string chunks;
    int firstPoint = 0;
    const int pieces = pieceCount(plan, polygons);
    for (int i = 0; i < pieces; i++) {
        const int first = static_cast<int>(static_cast<long long>(polygons) * i / pieces);
        const int end = static_cast<int>(static_cast<long long>(polygons) * (i + 1) / pieces);
        const Piece piece = makePiece(plan, end - first);
        if (plan.older)
            chunks += pointsChunk(piece) + olderPolygonsChunk(piece);
        else
            chunks += newerPiece(piece, plan, firstPoint, first);
        firstPoint += piece.width * piece.height;
    }
    return chunks;
}

static std::string surfaceChunk(const ModelPlan &plan, int surface) {
    const bool faceted = surface > 0 && surface == plan.surfaces - 1;
    const std::string smoothing = sub("SMAN", f4(faceted ? 0.0F : plan.smoothing));
    if (plan.older)
        return chunk("SURF", s0(surfaceName(surface)) + sub("COLR", u4(0x40608000)) + smoothing);
    std::string body =
        s0(surfaceName(surface)) + s0("") + sub("COLR", f4(0.25F, 0.5F, 1) + vx(0)) + smoothing;
    if (plan.pointMaps || plan.cornerMaps)
        body += sub("BLOK", sub("IMAP", s0("o") + sub("CHAN", "COLR")) + sub("PROJ", u2(5)) +
                                sub("IMAG", vx(1)));
    return chunk("SURF", body);
}

std::string generateModel(const ModelPlan &plan) {
    std::string names;
    std::string surfaces;
    for (int surface = 0; surface < plan.surfaces; surface++) {
        names += s0(surfaceName(surface));
        surfaces += surfaceChunk(plan, surface);
    }
    std::string chunks = chunk(plan.older ? "SRFS" : "TAGS", names);
    for (int i = 0; i < plan.layers; i++) {
        if (!plan.older)
            chunks += chunk("LAYR", u2(static_cast<unsigned>(i)) + u2(0) + f4(0, 0, 0) + s0(""));
        chunks += layerChunks(plan, plan.polygons / plan.layers);
    }
    return form(plan.older ? "LWOB" : "LWO2", chunks + surfaces);
}
