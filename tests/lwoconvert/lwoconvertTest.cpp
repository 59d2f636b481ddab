// lwoconvert as a user runs it: what it writes, what it says, with what status it ends.
#include "checker/modelFile.h"
#include "tests/support/childProcess.h"
#include "tests/support/plankModel.h"
#include "tests/support/pngPicture.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <set>

namespace fs = std::filesystem;

namespace {

// In a folder that holds plank.lwo and wood.tga.
class Lwoconvert : public testing::Test {
protected:
    void SetUp() override { folder = fs::path(Plank().write("planks")).parent_path().string(); }

    int run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), LWOCONVERT);
        const int status = runChild(arguments, folder, {}, testPath("said"));
        said = readText(testPath("said"));
        return status;
    }

    std::set<std::string> files() const {
        std::set<std::string> names;
        for (const auto &entry : fs::directory_iterator(folder))
            names.insert(entry.path().filename().string());
        return names;
    }

    std::string bytes(const std::string &name) const { return readText(folder + "/" + name); }

    std::string folder, said;
};

const std::set<std::string> BEFORE = {"plank.lwo", "wood.tga"};

} // namespace

TEST_F(Lwoconvert, writesAModelWithItsPicturesAndSaysSo) {
    EXPECT_EQ(run({"plank.lwo", "out.LWO"}), 0);
    EXPECT_EQ(said, "out.LWO is written, with out-wood.tga\n");
    EXPECT_EQ(files(), (std::set<std::string>{"plank.lwo", "wood.tga", "out.LWO", "out-wood.tga"}));
    EXPECT_EQ(bytes("out-wood.tga").substr(18), bytes("wood.tga").substr(18));
}

TEST_F(Lwoconvert, endsWithTheStatusOfWhatIsLost) {
    Plank plank;
    plank.surfaces = surf("wood", imageMap(1, 0) + sub("SHDR", "x"));
    plank.imageName = "";
    plank.write("planks");
    EXPECT_EQ(run({"plank.lwo", "out.lwo"}), 1);
    EXPECT_EQ(said, "plank.lwo: picture \"wood.tga\" of surface \"wood\" is not there: the surface "
                    "has its plain colour; put it beside the model\n"
                    "out.lwo is written\n");
    EXPECT_EQ(run({"--quiet", "--force", "plank.lwo", "out.lwo"}), 1);
    EXPECT_EQ(said, "");
}

TEST_F(Lwoconvert, writesNothingWhenItCannot) {
    writeFile(folder + "/cut.lwo", Plank().bytes().substr(0, 90));
    writeFile(folder + "/empty.lwo", form("LWO2", chunk("DESC", s0("empty"))));
    writeFile(folder + "/out-wood.tga", "somebody's");
    fs::create_directory(folder + "/folder.lwo");
    const std::set<std::string> before = files();
    const struct {
        std::vector<std::string> arguments;
        const char *said; // among other things
    } cases[] = {
        {{"plank.lwo"}, "takes two files"},
        {{"plank.lwo", "a.lwo", "b.lwo"}, "takes two files"},
        {{"plank.lwo", "out.ply"}, "OUT ends in .lwo or .glb"},
        {{"plank.ply", "out.lwo"}, "IN ends in"},
        {{"--scale", "0", "plank.lwo", "a.lwo"}, "--scale takes a number above 0"},
        {{"--turn", "1,2", "plank.lwo", "a.lwo"}, "--turn takes degrees"},
        {{"--move", "1,2,nan", "plank.lwo", "a.lwo"}, "--move takes a step"},
        {{"--mirror", "w", "plank.lwo", "a.lwo"}, "--mirror takes x, y or z"},
        {{"nothing.lwo", "a.lwo"}, "nothing.lwo: No such file"},
        {{"cut.lwo", "a.lwo"}, "cut.lwo: damaged"},
        {{"empty.lwo", "a.lwo"}, "empty.lwo: "},
        {{"plank.lwo", "plank.lwo"}, "are the same file; --force"},
        {{"plank.lwo", "cut.lwo"}, "cut.lwo is there already; --force"},
        {{"plank.lwo", "out.lwo"}, "out-wood.tga is there already; --force"},
        {{"plank.lwo", "folder.lwo"}, "folder.lwo is a folder"},
        {{"plank.lwo", "nowhere/out.lwo"}, "cannot write"},
        {{"--fit", "gone.lwo", "plank.lwo", "a.lwo"}, "gone.lwo: No such file"},
        {{"--fit", "empty.lwo", "plank.lwo", "a.lwo"}, "empty.lwo: it has no place"},
        {{"--move", "3e38,0,0", "--scale", "3e38", "plank.lwo", "a.lwo"}, "too far away"},
    };
    for (const auto &of : cases) {
        EXPECT_EQ(run(of.arguments), 2) << of.said;
        EXPECT_NE(said.find(of.said), std::string::npos) << of.said << "\n" << said;
        EXPECT_EQ(files(), before) << of.said;
    }
    EXPECT_EQ(bytes("out-wood.tga"), "somebody's");
}

// A signal may come too late to stop it; the picture is so large that some do not.
TEST_F(Lwoconvert, leavesAllOrNothingWhenItIsInterrupted) {
    constexpr unsigned SIDE = 2048;
    Plank plank;
    plank.image = targa(2, SIDE, SIDE, 24, 0, std::string(3UL * SIDE * SIDE, 'x'));
    plank.write("planks");
    const std::set<std::string> whole = {"plank.lwo", "wood.tga", "out.lwo", "out-wood.tga"};
    const std::string output = testPath("interrupted");
    bool isStopped = false;
    for (int attempt = 0; attempt < 20 && !isStopped; attempt++) {
        fs::remove(output);
        Child child = startChild({LWOCONVERT, "plank.lwo", "out.lwo"}, folder, {}, output);
        const std::string part = folder + "/out-wood.tga.part" + std::to_string(child.pid);
        while (!fs::exists(part) && readText(output).empty())
            ;
        signalChild(child, SIGINT);
        const int status = waitChild(child);
        isStopped = files() == BEFORE;
        EXPECT_TRUE(isStopped ? status == 128 + SIGINT : files() == whole) << status;
        fs::remove(folder + "/out.lwo");
        fs::remove(folder + "/out-wood.tga");
    }
    EXPECT_TRUE(isStopped);
}

TEST_F(Lwoconvert, takesAnothersPlaceAgainAndAgain) {
    const auto boxOf = [&](const std::string &name) {
        const st_modelFile model = openModel(folder + "/" + name);
        const float *box = model.object->layers->bbox;
        return std::vector<float>(box, box + 6);
    };
    Plank room; // 3 wide, 2 high: the plank of 3 by 1 fits as it is
    room.points = pnts({10, 5, 7, 13, 5, 7, 13, 7, 7, 10, 7, 7, 10, 7, 7});
    writeFile(folder + "/room.lwo", room.bytes());
    for (int i = 0; i < 2; i++) {
        EXPECT_EQ(run({"plank.lwo", "room.lwo", "--fit", "room.lwo"}), 0) << said;
        EXPECT_EQ(boxOf("room.lwo"), (std::vector<float>{10, 5, 7, 13, 6, 7}));
    }
    EXPECT_EQ(run({"plank.lwo", "other.lwo", "--fit", "room.lwo", "--move", "0,0,1"}), 0);
    EXPECT_EQ(boxOf("other.lwo"), (std::vector<float>{10, 5, 8, 13, 6, 8}));
}

// What lwoview shows of a model.
static Picture stillOf(const std::string &model, const std::string &folder) {
    EXPECT_EQ(runChild({LWOVIEW, model, "--still", "still.png", "--size", "200x150"}, folder,
                       {"LIBGL_ALWAYS_SOFTWARE=1", "ASAN_OPTIONS=detect_leaks=0"},
                       testPath("said")),
              0);
    return readPng(folder + "/still.png");
}

static double meanDifference(const Picture &a, const Picture &b) {
    double sum = 0;
    for (std::size_t i = 0; i < a.rgb.size() && i < b.rgb.size(); i++)
        sum += std::abs(a.rgb[i] - b.rgb[i]);
    return a.rgb.size() == b.rgb.size() ? sum / static_cast<double>(a.rgb.size()) : 255;
}

TEST_F(Lwoconvert, changesNothingOfTheSet) {
    const std::string show = SHOW_DIR "/lwo/";
    // Not the lonely sun: its layout has a picture that the show does not know how to show.
    for (const std::string name : {"tree3d", "k7", "sol", "gubbenimolnet", "box4"}) {
        ASSERT_EQ(run({show + name + ".lwo", name + ".lwo"}), 0) << said;
        ASSERT_EQ(run({show + name + ".lwo", name + ".glb"}), 0) << said;
        ASSERT_EQ(run({name + ".glb", name + "-back.lwo"}), 0) << said;
        const Picture before = stillOf(show + name + ".lwo", folder);
        EXPECT_LT(meanDifference(stillOf(name + ".lwo", folder), before), 1) << name;
        EXPECT_LT(meanDifference(stillOf(name + "-back.lwo", folder), before), 1) << name;
    }
}
