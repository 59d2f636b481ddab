// Whether a model can be shown: what the renderer would leave out, show otherwise than meant, or
// not survive.
//
//   for (const st_finding &finding : checkModel(model))
//       std::printf("%s\n", findingLine(model.path, finding).c_str());
#pragma once

#include "checker/finding.h"
#include "checker/modelFile.h"

#include <string>
#include <vector>

// In the order of the rules. Ends for every object, also for those that the renderer hangs on. The
// model must have an object, the surfaces of which get the names that the renderer gives them; its
// textures are looked up beside its file.
std::vector<st_finding> checkModel(const st_modelFile &model);

// Of these only what the renderer would never come back from: ask before you load. Looks at no
// image.
std::vector<st_finding> checkLoading(const st_modelFile &model);

// What is wrong with the music of a show, given its folder.
std::vector<st_finding> checkMusic(const std::string &showFolder);

// Which of the show's models a folder does not have.
std::vector<st_finding> checkFolder(const std::string &folder);
