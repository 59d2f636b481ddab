// Whatever is done for speed, what comes out stays the same to the last bit: digests of models
// that were loaded when the reader was at its plainest.
#include "tests/reader/readerTest.h"
#include "tests/support/generatedModel.h"
#include "tests/support/objectDigest.h"

#include <cmath>
#include <random>

static ModelPlan plan(int polygons, int corners, float smoothing) {
    ModelPlan made;
    made.polygons = polygons;
    made.corners = corners;
    made.smoothing = smoothing;
    return made;
}

static ModelPlan split(int surfaces, int layers, int pieces) {
    ModelPlan made = plan(900, 6, 0.7F);
    made.surfaces = surfaces;
    made.layers = layers;
    made.pieces = pieces;
    return made;
}

static ModelPlan mapped(bool points, bool corners, int layers, int pieces) {
    ModelPlan made = split(3, layers, pieces);
    made.pointMaps = points;
    made.cornerMaps = corners;
    made.smoothGroups = true;
    return made;
}

static ModelPlan older(ModelPlan made) {
    made.older = true;
    return made;
}

TEST(Digest, generatedModelsStayTheSame) {
    const struct {
        ModelPlan plan;
        std::uint64_t digest;
    } models[] = {
        {plan(1000, 6, 0), 0xFA7631A449DC160FU},
        {plan(1000, 6, 0.25F), 0xE79C2ADEEC1D3C51U},
        {plan(1000, 6, 1.0F), 0xA4F7AA8469957BF4U},
        {plan(1000, 6, 3.2F), 0x17C7595174B13896U},
        {plan(2000, 49, 0.5F), 0x77C3AC702BFBC631U},
        {plan(40, 49, 1.5F), 0xD0A09CEEC7D760EAU},
        {split(200, 1, 1), 0xA7670807BFEE1220U},
        {split(4, 7, 3), 0x2CD1F925000662FEU},
        {mapped(true, false, 1, 1), 0xB8F1263DEE6AE65AU},
        {mapped(false, true, 2, 1), 0xEEA4A10F37D9946EU},
        {mapped(true, true, 2, 3), 0x76F524915B79A15FU},
        {older(plan(1000, 6, 0.5F)), 0x898681025FB82C86U},
        {older(split(5, 1, 4)), 0x4EECD53F90B6EBDBU},
    };
    int number = 0;
    for (const auto &model : models) {
        const Object object = there(load(generateModel(model.plan)));
        EXPECT_EQ(objectDigest(*object), model.digest) << "model " << number;
        number++;
    }
}

TEST(Digest, allOtherRecordsStayTheSame) {
    const std::string header =
        s0("b") + sub("CHAN", "COLR") + sub("OPAC", u2(1) + f4(0.5F) + vx(2));
    const std::string placed = sub("TMAP", sub("SIZE", f4(1, 2, 3) + vx(1)) + sub("CSYS", u2(1)));
    const std::string surface =
        s0("red") + s0("old") + sub("COLR", f4(1, 0, 0.5F) + vx(1)) + sub("LINE", u2(1) + f4(2)) +
        sub("BLOK", sub("IMAP", header) + placed + sub("VMAP", s0("uv")) + sub("IMAG", vx(1))) +
        sub("BLOK", sub("PROC", header) + sub("VALU", f4(1)) + sub("FUNC", s0("wood") + "data")) +
        sub("BLOK", sub("SHDR", s0("s") + sub("ENAB", u2(1))) + sub("FUNC", s0("toon") + "data"));
    const std::string envelope = vx(1) + sub("NAME", s0("X")) + sub("KEY ", f4(1) + f4(2)) +
                                 sub("SPAN", "TCB " + f4(1, 2, 3)) + sub("KEY ", f4(0) + f4(2)) +
                                 sub("CHAN", s0("n") + u2(1) + "data");
    const std::string clip = u4(1) + sub("STIL", s0("a.tga")) + sub("GAMM", f4(1) + vx(1)) +
                             sub("IFLT", s0("blur") + u2(1) + "data");
    Object object = there(loadLWO2(chunk("TAGS", s0("red") + s0("none")) + chunk("ENVL", envelope) +
                                   chunk("CLIP", clip) + chunk("SURF", surface) +
                                   chunk("SURF", s0("blue") + s0("") + sub("SMAN", f4(1.5F)))));
    EXPECT_EQ(objectDigest(*object), 0x9C946477434C06C5U);

    const std::string old = s0("red") + sub("FLAG", u2(0x104)) + sub("GLOS", u2(64)) +
                            sub("CTEX", s0("Cubic Image Map")) + sub("TFLG", u2(0x7A)) +
                            sub("TIMG", s0("b (sequence)")) + sub("TVEL", f4(1, 2, 3)) +
                            sub("BTEX", s0("Wood")) + sub("TCLR", u4(0x10203040));
    object = there(load(form("LWOB", chunk("SRFS", s0("red")) + chunk("SURF", old))));
    EXPECT_EQ(objectDigest(*object), 0x626D070208239C32U);
}

// ------------------------------------------------------------------------- normals

static bool smoothsInto(const st_lwPolygon &polygon, const st_lwPolygon &neighbour) {
    const double angle = std::acos(dot(polygon.normal, neighbour.normal));
    return neighbour.smoothGroup == polygon.smoothGroup &&
           !(angle > static_cast<double>(polygon.surface->smoothing));
}

// The normal of a corner as the formula has it, an arc cosine for every pair.
static void formulaNormal(const st_lwLayer &layer, int number, int point, float normal[3]) {
    const st_lwPolygon *polygons = layer.polygonList.polygons;
    const st_lwPolygon &polygon = polygons[number];
    std::memcpy(normal, polygon.normal, sizeof polygon.normal);
    if (!(polygon.surface->smoothing > 0))
        return;
    const st_lwPoint &shared = layer.pointList.points[point];
    for (int i = 0; i < shared.polygonCount; i++) {
        const st_lwPolygon &neighbour = polygons[shared.polygons[i]];
        if (shared.polygons[i] != number && smoothsInto(polygon, neighbour))
            for (int axis = 0; axis < 3; axis++)
                normal[axis] += neighbour.normal[axis];
    }
    normalize(normal);
}

static std::uint64_t digestOf(const float vector[3]) {
    Digest digest;
    digest.add(vector, 3);
    return digest.value;
}

// Corners whose normal is not that of the formula, bit by bit.
static int countWrongNormals(const st_lwLayer &layer) {
    int wrong = 0;
    for (int i = 0; i < layer.polygonList.count; i++) {
        const st_lwPolygon &polygon = layer.polygonList.polygons[i];
        for (int j = 0; j < polygon.vertexCount; j++) {
            float expected[3];
            formulaNormal(layer, i, polygon.vertices[j].index, expected);
            wrong += digestOf(expected) != digestOf(polygon.vertices[j].normal);
        }
    }
    return wrong;
}

// A fan of polygons that all meet in one edge, each turned by another angle; every third one looks
// the other way, every fifth one comes back to the origin again and again. Of two surfaces, the
// second one smooths over half the angle.
static std::string fan(const std::vector<float> &angles, float smoothing, bool grouped) {
    std::string points = f4(0, 0, 0) + f4(0, 1, 0);
    std::string polygons = "FACE";
    std::string surfaces = "SURF";
    std::string groups = "SMGP";
    for (unsigned i = 0; i < angles.size(); i++) {
        points += f4(std::cos(angles[i]), 0, std::sin(angles[i]));
        const unsigned visits = i % 5 == 4 ? 17 : 0;
        polygons += u2(3 + visits) + vx(0) + vx(i % 3 == 2 ? 1 : i + 2);
        for (unsigned visit = 0; visit < visits; visit++)
            polygons += vx(0);
        polygons += vx(i % 3 == 2 ? i + 2 : 1);
        surfaces += vx(i) + vx(i % 4 == 1 ? 1 : 0);
        groups += vx(i) + vx(grouped && i % 7 < 3 ? 1 : 0);
    }
    return chunk("TAGS", s0("s") + s0("t")) + chunk("PNTS", points) + chunk("POLS", polygons) +
           chunk("PTAG", surfaces) + chunk("PTAG", groups) +
           chunk("SURF", s0("s") + s0("") + sub("SMAN", f4(smoothing))) +
           chunk("SURF", s0("t") + s0("") + sub("SMAN", f4(smoothing / 2)));
}

// Pairs at, just below and just above the angle, opposite ones, and ones of the same direction:
// where rounding decides.
TEST(Normals, areThoseOfTheFormulaAtEveryAngle) {
    for (const float base : {1e-4F, 0.01F, 0.5F, 0.785398F, 1.5707963F, 3.0F, 3.1415927F, 4.0F})
        for (int step = -2; step <= 2; step++) {
            const float smoothing = base * (1.0F + static_cast<float>(step) * 6e-8F);
            for (const std::size_t count : {13U, 14U, 100U, 101U}) {
                std::vector<float> angles(count);
                for (std::size_t i = 0; i < count; i++)
                    angles[i] = static_cast<float>(i % 13) * 0.5F * base;
                const Object object = there(loadLWO2(fan(angles, smoothing, count % 2 == 1)));
                EXPECT_EQ(countWrongNormals(*object->layers), 0) << smoothing << ' ' << count;
            }
        }
}

static unsigned pick(std::mt19937 *random, unsigned below) {
    return static_cast<unsigned>((*random)()) % below;
}

// Few points, so that many polygons share each; flat ones, flat in a tilted plane, or anywhere.
static std::string randomPoints(std::mt19937 *random, int count) {
    const unsigned kind = pick(random, 3);
    const float tilt = 0.1F * static_cast<float>(pick(random, 30));
    std::string points;
    for (int i = 0; i < count; i++) {
        float p[3];
        for (float &coordinate : p)
            coordinate = static_cast<float>(pick(random, 7)) - 3;
        if (kind < 2)
            p[2] = kind == 1 ? p[0] * tilt - p[1] / (tilt + 1) : 0.0F;
        points += f4(p[0], p[1], p[2]);
    }
    return chunk("PNTS", points);
}

// Lines, polygons of no area and ones that come back to a point are among them.
static std::string randomPolygons(std::mt19937 *random, int points, unsigned count) {
    std::string polygons = "FACE";
    std::string surfaces = "SURF";
    std::string groups = "SMGP";
    for (unsigned i = 0; i < count; i++) {
        const unsigned corners = pick(random, 6);
        polygons += u2(corners);
        for (unsigned j = 0; j < corners; j++)
            polygons += vx(pick(random, static_cast<unsigned>(points)));
        surfaces += vx(i) + vx(pick(random, 3));
        groups += vx(i) + vx(pick(random, 8) / 7);
    }
    return chunk("POLS", polygons) + chunk("PTAG", surfaces) + chunk("PTAG", groups);
}

TEST(Normals, areThoseOfTheFormulaInAnyModel) {
    std::mt19937 random(7);
    const float angles[] = {1e-30F,     1e-4F, 2.4e-4F,    3.4526698e-4F, 0.7853982F, 1.0F,
                            1.5707963F, 2.0F,  3.1415925F, 3.1415927F,    9.0F,       NAN};
    for (int i = 0; i < 300; i++) {
        const int points = 3 + static_cast<int>(pick(&random, 30));
        std::string bytes = randomPoints(&random, points) +
                            randomPolygons(&random, points, 3 + pick(&random, 200)) +
                            chunk("TAGS", s0("0") + s0("1") + s0("2"));
        for (const char *name : {"0", "1", "2"})
            bytes += chunk("SURF", s0(name) + s0("") + sub("SMAN", f4(angles[pick(&random, 12)])));
        const Object object = there(loadLWO2(bytes));
        EXPECT_EQ(countWrongNormals(*object->layers), 0) << i;
    }
}
