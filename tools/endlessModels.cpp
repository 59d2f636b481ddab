#include "tools/endlessModels.h"

#include "checker/modelCheck.h"
#include "driver/modelPaths.h"

std::string endlessModel() {
    for (const st_modelPath &path : MODEL_PATHS) {
        const st_modelFile model = openModel(path.path);
        if (model.object == nullptr)
            continue;
        for (const st_finding &finding : checkLoading(model))
            return findingLine(model.path, finding);
    }
    return "";
}
