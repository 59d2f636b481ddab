// Words in a file, and words read back from the models that were cut from them.
#include "tests/support/pictureFiles.h"
#include "tests/support/testFolder.h"
#include "workshop/checkWords.h"
#include "workshop/lettering.h"
#include "workshop/letters.h"
#include "workshop/mainView.h"
#include "workshop/screenPicture.h"
#include "workshop/set.h"
#include "workshop/upright.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>

// ---------------------------------------------------------------------------- the file

static st_wordsFile readSource(const std::string &source) {
    const std::string path = testPath("my.toml");
    std::ofstream(path) << source;
    return readWords(path);
}

constexpr char REST[] = "[logo]\ntext='k7'\n[scroll]\ntext='Hi!'\n"
                        "[greetings]\nfirst=['a']\nsecond=['b']\nthird=['c']\n";

TEST(Words, whatIsWrongIsSaidWithItsPlace) {
    const std::string MENDED = "; all the rest is looked at once this is mended\n"; // no TOML
    const struct {
        std::string source;
        std::string said; // after the path, one line each
    } cases[] = {
        {"[sign]\nname='A'\n" + std::string(REST), ""},
        {"[sign]\nnme='A'\n" + std::string(REST), ":2:1: [sign] has no key nme; name is meant?\n"},
        {"[sign]\nline='A'\n[logo]\nx='k7'\n",
         ": the section [scroll] is missing\n: the section [greetings] is missing\n"
         ":1:1: [sign] lacks name\n:3:1: [logo] lacks text\n"
         ":4:1: [logo] has no key x; known are text\n"},
        {"[sgin]\nname='A'\n" + std::string(REST),
         ":1:2: there is no section [sgin]; sign is meant?\n"},
        {"[sign]\nname=2003\nline=[]\n" + std::string(REST),
         ":2:6: name has to be text in quotation marks, not a number without quotation marks\n"
         ":3:6: line has to be text in quotation marks, not a list\n"},
        {"[sign]\nname='  '\n" + std::string(REST), ":2:6: name is empty\n"},
        {"[sign]\nname='\u00A0 \u3000\u200B'\nline='\u2003'\n" + std::string(REST),
         ":2:6: name is empty\n"},
        {"sign=1\n" + std::string(REST),
         ":1:6: sign has to be a section, [sign], not a number without quotation marks\n"},
        {"[sign]\nname='A\n" + std::string(REST),
         ":2:8: Error while parsing literal string: control characters other than TAB (U+0009) are "
         "explicitly prohibited; is the quotation mark at the end of the line missing?" +
             MENDED},
        {"[sign]\nname=\xE2\x80\x9C"
         "A\xE2\x80\x9D\n" +
             std::string(REST),
         ":2:6: Error while parsing value: could not determine value type; text has to stand "
         "between straight quotation marks, \"...\"" +
             MENDED},
        {"[sign]\nname='\xE5'\n" + std::string(REST),
         ":2:6: Encountered invalid utf-8 sequence; save the file as UTF-8 text" + MENDED},
        {"[sign]\nname='A'\n[page]\naddress='party.example'\nlanguage='Swedish'\n" +
             std::string(REST),
         ":4:9: address has to begin with https:// or http://\n"
         ":5:10: language has to be a code such as \"de\", \"sv\" or \"pt-BR\"\n"},
        {"name='A'\n[sign]\nname='A'\n" + std::string(REST),
         ":1:1: name stands in no section; it belongs below [sign]\n"},
        {"[logo]\ntext='four'\n[sign]\nname='A'\n[scroll]\ntext='x'\n[greetings]\nfirst='a'\n"
         "second=[]\nthird=['a','b','c','d','e','f','g','h','i','j','k','l','m',true]\n",
         ":2:6: the logo has 4 letters; one to three fit on the block\n"
         ":8:7: first has to be a list of names, [\"...\", \"...\"], not text\n"
         ":9:8: second is an empty list; it takes one to twelve names\n"
         ":10:7: third has 14 names, 2 more than fit on a wheel\n"
         ":10:60: a name in third has to be text in quotation marks, not true or false\n"},
        {"[sign]\nname='A'\n[palette]\nsun='#12345'\nmilk='#12345G'\n[music]\nfile='/'\n" +
             std::string(REST),
         ":4:5: sun has to be a colour such as \"#FFD23F\": red, green and blue, two digits each "
         "from 00 to FF\n"
         ":5:6: milk has to be a colour such as \"#FFD23F\": red, green and blue, two digits each "
         "from 00 to FF\n"
         ":7:6: / is no file\n"},
    };
    for (const auto &c : cases) {
        const st_wordsFile file = readSource(c.source);
        std::string said = sayProblems(file);
        for (std::size_t at = said.find(file.path); at != std::string::npos;
             at = said.find(file.path))
            said.erase(at, file.path.size());
        EXPECT_EQ(said, c.said) << c.source;
    }
    EXPECT_EQ(sayProblems(readWords("/nowhere.toml")),
              "/nowhere.toml: cannot be read: No such file or directory\n");
    EXPECT_EQ(sayProblems(readWords("/")), "/: cannot be read: Is a directory\n");
}

TEST(Words, readTidiedComposedAndFromTheFilesOwnFolder) {
    std::ofstream(testPath("tune.mp3")) << "";
    const st_wordsFile file = readSource(
        "[sign]\nname=\"A\xCC\x8Asa\\u0308 \"\n[logo]\ntext='1'\n[scroll]\ntext=\"\"\"\n one\r\n two\t"
        "three \n\"\"\"\n[greetings]\nfirst=['a']\nsecond=['b']\nthird=['c', ' d ']\n"
        "[music]\nfile='tune.mp3'\n[palette]\nsun='#0102fF'\n");
    EXPECT_EQ(sayProblems(file), "");
    EXPECT_EQ(file.words.name.text, "Åsä");
    EXPECT_EQ(file.words.secondLine.text, "");
    EXPECT_EQ(file.words.scrollText.text, "one two three");
    EXPECT_EQ(file.words.wheels[2].back().text, "d");
    EXPECT_EQ(file.words.music.text, testPath("tune.mp3"));
    EXPECT_EQ(file.words.palette[6], 0x0102FFU);
    EXPECT_EQ(file.words.palette[0], DEFAULT_PALETTE[0]);
}

TEST(Words, lettersThatCannotBeSetAreSaidWithTheirPlace) {
    st_wordsFile file =
        readSource("[sign]\nname='A \u2603'\nline='\u05E9\u05DC'\n" + std::string(REST));
    checkWords(&file, WORKSHOP_FONT);
    EXPECT_EQ(sayProblems(file),
              file.path +
                  ":2:9: the font has no letter '\u2603' (U+2603); [letters] font takes another "
                  "font\n" +
                  file.path +
                  ":3:7: words that run from right to left cannot be set: '\u05E9' (U+05E9)\n");
}

// ------------------------------------------------------------------------------ pictures

TEST(ScreenPicture, fitsWhateverItsShape) {
    const struct {
        int width, height;
        float barAbove, barBeside; // share of the screen that is no picture, at both edges together
    } cases[] = {{1, 1, 0, 0.29F},   {4, 3, 0, 0},       {3, 2, 0, 0},      {300, 100, 0.53F, 0},
                 {20, 100, 0, 0.8F}, {2000, 2, 0.8F, 0}, {2, 2000, 0, 0.8F}};
    for (const auto &c : cases) {
        const std::string path = testPath("screen.ppm.bmp");
        std::string pixels; // all white, rows padded to four bytes
        for (int y = 0; y < c.height; y++)
            pixels += std::string(static_cast<std::size_t>((c.width * 3 + 3) / 4 * 4), '\xFF');
        const auto u32 = [](std::size_t n) {
            std::string bytes;
            for (int shift = 0; shift < 32; shift += 8)
                bytes += static_cast<char>(n >> shift & 0xFF);
            return bytes;
        };
        std::ofstream(path, std::ios::binary)
            << "BM" << u32(54 + pixels.size()) << u32(0) << u32(54) << u32(40)
            << u32(static_cast<std::size_t>(c.width)) << u32(static_cast<std::size_t>(c.height))
            << u32(1 | 24 << 16) << std::string(24, '\0') << pixels;
        st_picture screen;
        ASSERT_EQ(readScreenPicture(path, &screen), "");
        const auto bars = [&](auto at) {
            int count = 0;
            for (int k = 0; k < screen.width; k++)
                count += screen.pixels[static_cast<std::size_t>(at(k))].x < 1 ? 1 : 0;
            return static_cast<float>(count) / static_cast<float>(screen.width);
        };
        const int middle = screen.width / 2;
        EXPECT_NEAR(bars([&](int k) { return k * screen.width + middle; }), c.barAbove, 0.02F);
        EXPECT_NEAR(bars([&](int k) { return middle * screen.width + k; }), c.barBeside, 0.02F);
    }
}

// With the data that a camera puts behind the first two bytes: how it was held.
static std::string heldPhotograph(unsigned char orientation) {
    const std::string words = std::string("Exif\0\0MM\0*\0\0\0\b\0\1\1\x12\0\3\0\0\0\1\0", 25) +
                              static_cast<char>(orientation) + std::string(6, '\0');
    std::string jpeg = jpegPicture();
    return jpeg.insert(2,
                       std::string("\xFF\xE1\0", 3) + static_cast<char>(words.size() + 2) + words);
}

TEST(ScreenPicture, photographsStandAsTheyWereSeen) {
    // Two rows of three pixels as a camera writes them, and rows as they were seen.
    const char *const seen[] = {"abc def",  "abc def",  "cba fed",  "fed cba",  "def abc",
                                "ad be cf", "da eb fc", "fc eb da", "cf be ad", "abc def"};
    for (unsigned char orientation = 0; orientation <= 9; orientation++) {
        st_scenePicture picture = {"", 3, 2, {}};
        for (const char pixel : std::string("abcdef"))
            picture.pixels.insert(picture.pixels.end(), 4, static_cast<unsigned char>(pixel));
        const std::string file = heldPhotograph(orientation);
        turnUpright(reinterpret_cast<const unsigned char *>(file.data()), file.size(), &picture);
        std::string rows;
        for (std::size_t k = 0; k < 6; k++) {
            if (k > 0 && k % static_cast<std::size_t>(picture.width) == 0)
                rows += ' ';
            rows += static_cast<char>(picture.pixels[4 * k + 3]);
        }
        EXPECT_EQ(rows, seen[orientation]) << +orientation;
    }
    const std::string path = testPath("held.jpg");
    std::string file = heldPhotograph(6);
    file[file.find("\xFF\xC0") + 8] = 8; // pixels wide, 2 high
    std::ofstream(path, std::ios::binary) << file;
    st_picture screen;
    ASSERT_EQ(readScreenPicture(path, &screen), "");
    const auto at = [&](int x, int y) {
        return screen.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(screen.width) +
                             static_cast<std::size_t>(x)];
    };
    EXPECT_EQ(lengthOf(at(0, screen.height / 2) - INK), 0); // a bar beside it
    EXPECT_GT(lengthOf(at(screen.width / 2, 1) - INK), 0);
}

// -------------------------------------------------------------- read back from models

// A line of letters as black and white cells, rows from the top down, cut to its ink.
struct st_print {
    int width = 0, height = 0;
    std::vector<bool> inked;

    bool at(int x, int y) const {
        return inked[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                     static_cast<std::size_t>(x)];
    }
};

// As the font draws it.
static st_print printOf(const std::string &font, const std::string &line, float tracking) {
    constexpr int EM = 40; // pixels
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    EXPECT_EQ(FT_Init_FreeType(&library), 0);
    EXPECT_EQ(FT_New_Face(library, font.c_str(), 0, &face), 0);
    FT_Set_Pixel_Sizes(face, 0, EM);
    std::map<std::pair<int, int>, bool> ink; // by row and column
    double pen = 0;
    for (const char32_t letter : lettersOf(line)) {
        FT_Load_Char(face, letter, FT_LOAD_RENDER | FT_LOAD_NO_HINTING);
        const FT_GlyphSlot glyph = face->glyph;
        for (int y = 0; y < static_cast<int>(glyph->bitmap.rows); y++)
            for (int x = 0; x < static_cast<int>(glyph->bitmap.width); x++)
                if (glyph->bitmap.buffer[y * glyph->bitmap.pitch + x] > 127)
                    ink[{y - glyph->bitmap_top,
                         static_cast<int>(std::lround(pen)) + glyph->bitmap_left + x}] = true;
        pen += static_cast<double>(glyph->linearHoriAdvance) / 65536.0 +
               EM * static_cast<double>(tracking);
    }
    FT_Done_FreeType(library);
    int left = INT32_MAX;
    int right = INT32_MIN;
    for (const auto &[place, inked] : ink) {
        left = std::min(left, place.second);
        right = std::max(right, place.second);
    }
    const int top = ink.begin()->first.first;
    st_print print = {right - left + 1, ink.rbegin()->first.first - top + 1, {}};
    print.inked.resize(static_cast<std::size_t>(print.width) *
                       static_cast<std::size_t>(print.height));
    for (const auto &[place, inked] : ink)
        print.inked[static_cast<std::size_t>(place.first - top) *
                        static_cast<std::size_t>(print.width) +
                    static_cast<std::size_t>(place.second - left)] = true;
    return print;
}

// Polygons of letters, laid flat: x to the right and y up as they are read.
using Flat = std::vector<std::vector<st_uv>>;

static bool covers(const std::vector<st_uv> &polygon, st_uv point) {
    bool above = false;
    bool below = false;
    for (std::size_t k = 0; k < polygon.size(); k++) {
        const st_uv a = polygon[k];
        const st_uv b = polygon[(k + 1) % polygon.size()];
        const float side = (b.u - a.u) * (point.v - a.v) - (b.v - a.v) * (point.u - a.u);
        (side > 0 ? above : below) = true;
    }
    return !(above && below);
}

// The letters in the cells of a print; both fill the same frame.
static std::vector<bool> cellsOf(const Flat &letters, const st_print &print) {
    st_uv low = letters[0][0];
    st_uv high = low;
    for (const auto &polygon : letters)
        for (const st_uv at : polygon) {
            low = {std::min(low.u, at.u), std::min(low.v, at.v)};
            high = {std::max(high.u, at.u), std::max(high.v, at.v)};
        }
    std::vector<bool> inked(print.inked.size(), false);
    const float wide = (high.u - low.u) / static_cast<float>(print.width);
    const float tall = (high.v - low.v) / static_cast<float>(print.height);
    for (const auto &polygon : letters) {
        const auto [left, right] = std::minmax_element(polygon.begin(), polygon.end(),
                                                       [](st_uv a, st_uv b) { return a.u < b.u; });
        const int first = static_cast<int>((left->u - low.u) / wide);
        const int last = std::min(static_cast<int>((right->u - low.u) / wide), print.width - 1);
        for (int y = 0; y < print.height; y++)
            for (int x = first; x <= last; x++)
                if (covers(polygon, {low.u + (static_cast<float>(x) + 0.5F) * wide,
                                     high.v - (static_cast<float>(y) + 0.5F) * tall}))
                    inked[static_cast<std::size_t>(y) * static_cast<std::size_t>(print.width) +
                          static_cast<std::size_t>(x)] = true;
    }
    return inked;
}

// The faces of a surface for which keep() says so, laid flat by flat(); both are given places of
// the model.
static Flat facesOf(const st_mesh &mesh, const std::string &surface,
                    const std::function<bool(st_vec middle)> &keep,
                    const std::function<st_uv(st_vec)> &flat) {
    Flat faces;
    for (const st_polygon &polygon : mesh.polygons) {
        if (mesh.surfaces[static_cast<std::size_t>(polygon.surface)].name != surface)
            continue;
        st_vec middle = {0, 0, 0};
        std::vector<st_uv> corners;
        for (int k = 0; k < polygon.cornerCount; k++) {
            const st_vec at = mesh.points[static_cast<std::size_t>(polygon.points[k])];
            middle = middle + at * (1.0F / static_cast<float>(polygon.cornerCount));
            corners.push_back(flat(at));
        }
        if (keep(middle))
            faces.push_back(corners);
    }
    return faces;
}

// ------------------------------------------------------------------------- the extremes

struct st_extreme {
    const char *what;
    st_words words;
};

static std::vector<st_phrase> namesOf(const std::vector<const char *> &texts) {
    std::vector<st_phrase> names;
    names.reserve(texts.size());
    for (const char *text : texts)
        names.push_back({text});
    return names;
}

static st_words wordsOf(const char *name, const char *line, const char *logo,
                        const std::string &text, const std::vector<const char *> &names) {
    st_words words = defaultWords();
    words.name = {name};
    words.secondLine = {line};
    words.logo = {logo};
    words.scrollText = {text};
    for (auto &wheel : words.wheels)
        wheel = namesOf(names);
    return words;
}

static std::string repeated(const std::string &text, int times) {
    std::string whole;
    for (int k = 0; k < times; k++)
        whole += text;
    return whole;
}

static std::vector<st_extreme> extremes() {
    return {
        {"default", defaultWords()},
        {"shortest", wordsOf("I", "", "i", "!", {"l"})},
        {"longest", wordsOf("Maja & Tobias Ångström-Ek", "Großmühlenstraße 12 B, 5", "WÖM",
                            repeated("Kom & dansa på Åsas 89-årsfest! ", 24),
                            {"Familjen Åberg-Ek 1 & 2", "b", "c", "d", "e", "f", "g", "h", "i", "j",
                             "k", "Storebror Ludvig Ö"})},
        {"roundest", wordsOf("888 & 888", "&8&8&", "8&8", repeated("&8Ő&%@ ", 60),
                             {"&8&8&8&8", "@@@@@@@", "ØØØØØØØ", "&&&&&&&", "88888888", "&8&8&8&8",
                              "@@@@@@@", "ØØØØØØØ", "&&&&&&&", "88888888", "ŐŰŐŰŐŰ", "ǾǾǾǾǾ"})},
        {"other scripts", wordsOf("ようこそ", "さくら", "さく", "みなさん、ようこそ！",
                                  {"たろう", "はなこ", "Nguyễn", "Łukasz"})},
    };
}

static st_mesh meshOf(const char *file) {
    for (const st_model &model : allModels())
        if (std::string(file) == model.file)
            return model.make();
    throw std::invalid_argument(file);
}

static std::size_t polygonsOf(const char *file) {
    return meshOf(file).polygons.size();
}

static void use(const st_extreme &extreme) {
    st_wordsFile file = {"", "", extreme.words, {}};
    checkWords(&file, WORKSHOP_FONT);
    EXPECT_EQ(sayProblems(file), "") << extreme.what;
    useWords(extreme.words);
}

TEST(Extremes, aFrameStaysWithinItsBudget) {
    std::size_t scene = 0;
    openFont(WORKSHOP_FONT);
    for (const char *file : {"tree3d.lwo", "moln1.lwo", "moln2.lwo", "gubbenimolnet.lwo",
                             "box4.lwo", "grass.lwo", "sol.lwo"})
        scene += polygonsOf(file);
    for (const st_extreme &extreme : extremes()) {
        use(extreme);
        // Drawn at once in the main view; one wheel of greetings at a time.
        const std::size_t wheel = std::max(
            {polygonsOf("greets1.lwo"), polygonsOf("greets2.lwo"), polygonsOf("greets3.lwo")});
        EXPECT_LE(scene + wheel + polygonsOf("scrollernew.lwo") + polygonsOf("skylt.lwo"),
                  FRAME_POLYGONS)
            << extreme.what;
    }
}

static double agreement(const std::vector<bool> &one, const std::vector<bool> &other) {
    double both = 0;
    double either = 0;
    for (std::size_t k = 0; k < one.size(); k++) {
        both += one[k] && other[k] ? 1 : 0;
        either += one[k] || other[k] ? 1 : 0;
    }
    return both / either;
}

static std::vector<bool> mirrored(const st_print &print) {
    std::vector<bool> cells;
    for (int y = 0; y < print.height; y++)
        for (int x = print.width - 1; x >= 0; x--)
            cells.push_back(print.at(x, y));
    return cells;
}

static void expectReads(const Flat &letters, const std::string &line, float tracking = 0) {
    ASSERT_FALSE(letters.empty()) << line;
    const st_print print = printOf(WORKSHOP_FONT, line, tracking);
    const std::vector<bool> seen = cellsOf(letters, print);
    const double upright = agreement(seen, print.inked);
    EXPECT_GT(upright, 0.65) << line;
    // Some words read the same from both ends.
    if (agreement(print.inked, mirrored(print)) < 0.55) {
        EXPECT_LT(agreement(seen, mirrored(print)), upright - 0.1) << line;
    }
}

// The sign looks to -z, turned and tilted a little, so it is flattened along its own axes.
static void expectSignReads(const st_words &words) {
    const st_mesh mesh = meshOf("skylt.lwo");
    const st_place place = turned({0, 1, 0}, 12) * turned({1, 0, 0}, 9) * facingMainView();
    const st_vec right = place.x;
    const st_vec up = place.y;
    const auto flat = [&](st_vec at) { return st_uv{dotProduct(at, right), dotProduct(at, up)}; };
    float highest = -10;
    for (const auto &polygon : facesOf(
             mesh, "sign-letters", [](st_vec) { return true; }, flat))
        for (const st_uv at : polygon)
            highest = std::max(highest, at.v);
    const auto isUpper = [&](st_vec at) { return flat(at).v > highest - 0.34F; };
    expectReads(facesOf(mesh, "sign-letters", isUpper, flat), words.name.text);
    if (!words.secondLine.text.empty())
        expectReads(facesOf(
                        mesh, "sign-letters", [&](st_vec at) { return !isUpper(at); }, flat),
                    words.secondLine.text);
}

// Where the sign is read: from far in the main view, and near, from its side, in the close.
static void expectSignIsInThePicture() {
    static constexpr struct {
        int frame;
        float pitch, yaw, away;
    } VIEWS[] = {{5100, 31.4F, 180.3F, 5.8F},
                 {17949, -1.9F, 131.8F, 3.34F},
                 {18300, 7.3F, 147.1F, 3.32F},
                 {18750, 13.6F, 159.0F, 3.32F}};
    const st_mesh mesh = meshOf("skylt.lwo");
    for (const auto &view : VIEWS) {
        const st_place seen = moved({0, 0.02F, -view.away}) * turned({1, 0, 0}, view.pitch) *
                              turned({0, 1, 0}, view.yaw);
        const auto inPicture = [&](st_vec at) {
            const st_vec eyed = placePoint(seen, at);
            const float half = std::tan(PI / 8) * -eyed.z; // half its height there
            return st_uv{eyed.x / (half * 4 / 3), eyed.y / half};
        };
        const Flat letters = facesOf(
            mesh, "sign-letters", [](st_vec) { return true; }, inPicture);
        EXPECT_FALSE(letters.empty());
        for (const auto &polygon : letters)
            for (const st_uv at : polygon)
                ASSERT_LT(std::max(std::fabs(at.u), std::fabs(at.v)), 0.96F) << view.frame;
    }
}

static void expectWheelReads(const char *file, const std::vector<st_phrase> &names) {
    const st_mesh mesh = meshOf(file);
    const std::size_t spokes = names.size() * ((3 + names.size() - 1) / names.size());
    for (std::size_t k = 0; k < spokes; k++) {
        const float step = 2 * PI / static_cast<float>(spokes);
        const float turn = 34 * PI / 180 + step * static_cast<float>(k);
        const st_vec along = {-std::cos(turn), std::sin(turn), 0}; // the wheel looks to -z
        const st_vec up = {std::sin(turn), std::cos(turn), 0};
        const auto flat = [&](st_vec at) {
            return st_uv{dotProduct(at, along), dotProduct(at, up)};
        };
        const auto isOnSpoke = [&](st_vec at) {
            return std::fabs(std::atan2(flat(at).v, flat(at).u)) < step / 2;
        };
        expectReads(facesOf(mesh, "greet-letters", isOnSpoke, flat), names[k % names.size()].text);
    }
}

static void expectScrollReads(const std::string &text) {
    const st_mesh mesh = meshOf("scrollernew.lwo");
    const st_scrollPlan plan = planScroll(text);
    const float lean = 26 * PI / 180;
    const auto flat = [&](st_vec at) {
        return st_uv{-at.x, at.y * std::cos(lean) + at.z * std::sin(lean)};
    };
    float start = 0;
    for (const std::string &round : plan.rounds) {
        EXPECT_EQ(text.rfind(round, 0), 0U);
        const float end = start + textExtent(round, plan.tracking).advance * SCROLL_SIZE;
        expectReads(facesOf(
                        mesh, "letters",
                        [&](st_vec at) { return -at.x > start - 0.2F && -at.x < end + 0.2F; },
                        flat),
                    round, plan.tracking);
        start = end + plan.pause;
    }
    // It is there until the show ends, but for a pause and a sentence that would not be finished.
    EXPECT_LT(start - plan.pause, SCROLL_LENGTH + 0.5F);
    EXPECT_GT(start, 0.8F * SCROLL_LENGTH);
}

static void expectLogoReads(const std::string &logo) {
    expectReads(facesOf(
                    meshOf("k7.lwo"), "logo-face", [](st_vec at) { return at.z > 1.15F; },
                    [](st_vec at) {
                        return st_uv{at.x, at.y};
                    }),
                logo, LOGO_ROOM.tracking);
}

TEST(Extremes, wordsAreReadBackFromTheModels) {
    for (const st_extreme &extreme : extremes()) {
        SCOPED_TRACE(extreme.what);
        use(extreme);
        expectSignReads(extreme.words);
        expectSignIsInThePicture();
        expectLogoReads(extreme.words.logo.text);
        expectScrollReads(extreme.words.scrollText.text);
        expectWheelReads("greets1.lwo", extreme.words.wheels[0]);
        expectWheelReads("greets2.lwo", extreme.words.wheels[1]);
        expectWheelReads("greets3.lwo", extreme.words.wheels[2]);
    }
}

TEST(Extremes, whatIsTooLongIsTooLongByTheLettersSaid) {
    openFont(WORKSHOP_FONT);
    const std::string name = repeated("m", 40);
    const std::size_t most = name.size() - lettersTooMany(name, ARROW_ROOM);
    EXPECT_GT(most, 10U);
    EXPECT_EQ(lettersTooMany(name.substr(0, most), ARROW_ROOM), 0U);
    EXPECT_EQ(lettersTooMany(name.substr(0, most + 1), ARROW_ROOM), 1U);
    const std::string text = repeated("Kom! ", 300);
    const std::size_t longest = text.size() - scrollTooMany(text);
    EXPECT_GT(longest, 600U);
    EXPECT_EQ(scrollTooMany(text.substr(0, longest)), 0U);
    EXPECT_EQ(scrollTooMany(text.substr(0, longest + 7)), 7U);
}

TEST(Extremes, shortTextsHaveFinerLetters) {
    const auto fineness = [](const std::string &text) {
        return finestTolerance(planScroll(text).rounds, scrollStyle(), SCROLL_LETTERS);
    };
    openFont(WORKSHOP_FONT);
    EXPECT_LT(fineness("Bo fyller 50!"), 0.8F * fineness(defaultWords().scrollText.text));
}

TEST(Invitations, thatComeAsExamplesCanBeMade) {
    int count = 0;
    for (const auto &entry : std::filesystem::directory_iterator(INVITATIONS)) {
        st_wordsFile file = readWords(entry.path().string());
        checkWords(&file, WORKSHOP_FONT);
        EXPECT_EQ(sayProblems(file), "");
        count++;
    }
    EXPECT_EQ(count, 3);
}
