// A small model that is faultless as it stands: a plank of one quad and one triangle under a
// texture. Tests spoil a part of it.
//
//   3 ----- 2
//   |       |  4      wood.tga is clip 1
//   0 ----- 1
#pragma once

#include "tests/support/modelParts.h"
#include "tests/support/targaWriter.h"
#include "tests/support/testFolder.h"

#include <filesystem>
#include <string>

// A colour texture; projection 5 is UV. header: more sub-chunks of the block's header.
inline std::string imageMap(unsigned clip, unsigned projection = 5,
                            const std::string &header = "") {
    return sub("BLOK", sub("IMAP", s0("o") + sub("CHAN", "COLR") + header) +
                           sub("PROJ", u2(projection)) + sub("IMAG", vx(clip)) +
                           sub("VMAP", s0("planks")));
}

// Entries of a vertex map for points 0 to count - 1, of all the same value; for the corners of a
// polygon when corner is its index.
inline std::string entries(unsigned count, const std::string &values,
                           const std::string &corner = "") {
    std::string bytes;
    for (unsigned i = 0; i < count; i++)
        bytes.append(vx(i)).append(corner).append(values);
    return bytes;
}

struct Plank {
    std::string type = "LWO2";
    std::string layer = chunk("LAYR", u2(1) + u2(0) + f4(0, 0, 0) + s0("plank"));
    std::string tags = chunk("TAGS", s0("wood"));
    std::string points = pnts({0, 0, 0, 2, 0, 0, 2, 1, 0, 0, 1, 0, 3, 0.5F, 0});
    std::string polygons = pols({{0, 1, 2, 3}, {1, 4, 2}});
    std::string polygonTags = chunk("PTAG", "SURF" + vx(0) + vx(0) + vx(1) + vx(0));
    std::string maps = vmap("wood", 2, {0, 1, 1, 1, 1, 0, 0, 0, 0.5F, 0});
    std::string clips = stillClip(1, "Images/wood.tga");
    std::string surfaces = surf("wood", imageMap(1));
    // Binds no image, so that the plank's does not stay in force.
    std::string last = surf("(no image)", imageMap(0));
    std::string image = targa(2, 1, 1, 24, 0, "bgr");
    std::string imageName = "wood.tga";

    std::string bytes() const {
        return form(type, layer + tags + points + polygons + polygonTags + maps + clips + surfaces +
                              last);
    }

    // Writes it into an empty folder of the test's and gives its path.
    std::string write(const std::string &folder) const {
        const std::string directory = testPath(folder);
        std::filesystem::remove_all(directory);
        std::filesystem::create_directories(directory);
        if (!imageName.empty())
            writeFile(directory + "/" + imageName, image);
        writeFile(directory + "/plank.lwo", bytes());
        return directory + "/plank.lwo";
    }
};
