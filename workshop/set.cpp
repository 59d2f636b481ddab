// See set.h. The file names are those that the show loads.
#include "workshop/set.h"

#include "workshop/fileWriter.h"
#include "workshop/models/models.h"
#include "workshop/objectWriter.h"
#include "workshop/textures.h"

const std::vector<st_model> &allModels() {
    static const std::vector<st_model> models = {{"tree3d.lwo", makeTree},
                                                 {"moln1.lwo", makeCloudOne},
                                                 {"moln2.lwo", makeCloudTwo},
                                                 {"gubbenimolnet.lwo", makeOldMan},
                                                 {"box4.lwo", makeBox},
                                                 {"grass.lwo", makeGrass},
                                                 {"greets1.lwo", makeGreetingsOne},
                                                 {"sol.lwo", makeSun},
                                                 {"greets2.lwo", makeGreetingsTwo},
                                                 {"greets3.lwo", makeGreetingsThree},
                                                 {"scrollernew.lwo", makeScroller},
                                                 {"solensam.lwo", makeLonelySun},
                                                 {"pinne.lwo", makeStick},
                                                 {"k7.lwo", makeLogo},
                                                 {"skylt.lwo", makeSign}};
    return models;
}

void writeModels(const std::string &directory) {
    for (const st_texture &texture : allTextures())
        writeBytes(directory + "/" + texture.file, targaBytes(texture.paint(), texture.layout));
    for (const st_model &model : allModels())
        writeObject(directory + "/" + model.file, model.make());
}
