// See set.h. The file names are those that the show loads.
#include "workshop/set.h"

#include "modeling/objectWriter.h"
#include "modeling/oldObjectWriter.h"
#include "workshop/fileWriter.h"
#include "workshop/models/models.h"
#include "workshop/stop.h"
#include "workshop/textures.h"

const std::vector<st_model> &allModels() {
    static const std::vector<st_model> models = {{"tree3d.lwo", makeTree, objectBytes},
                                                 {"moln1.lwo", makeCloudOne, objectBytes},
                                                 {"moln2.lwo", makeCloudTwo, objectBytes},
                                                 {"gubbenimolnet.lwo", makeOldMan, objectBytes},
                                                 {"box4.lwo", makeBox, objectBytes},
                                                 {"grass.lwo", makeGrass, objectBytes},
                                                 {"greets1.lwo", makeGreetingsOne, objectBytes},
                                                 {"sol.lwo", makeSun, objectBytes},
                                                 {"greets2.lwo", makeGreetingsTwo, objectBytes},
                                                 {"greets3.lwo", makeGreetingsThree, objectBytes},
                                                 {"scrollernew.lwo", makeScroller, objectBytes},
                                                 {"solensam.lwo", makeLonelySun, oldObjectBytes},
                                                 {"pinne.lwo", makeStick, oldObjectBytes},
                                                 {"k7.lwo", makeLogo, objectBytes},
                                                 {"skylt.lwo", makeSign, objectBytes}};
    return models;
}

static std::string bytesOf(const st_model &model) {
    std::string problem;
    std::string bytes = model.bytes(model.make(), &problem);
    if (bytes.empty())
        stop(std::string(model.file) + " cannot be written: " + problem);
    return bytes;
}

void writeModels(const std::string &directory) {
    for (const st_texture &texture : allTextures())
        writeBytes(directory + "/" + texture.file, targaBytes(texture.paint(), texture.layout));
    for (const st_model &model : allModels())
        writeBytes(directory + "/" + model.file, bytesOf(model));
}
