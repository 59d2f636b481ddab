// recordShow: the show drawn off-screen by the driver itself, as a film with its sound or as
// pictures; see options.cpp for how to call it.
#include "checker/modelCheck.h"
#include "driver/modelPaths.h"
#include "hosts/offscreen/glutCalls.h"
#include "tools/recordShow/recording.h"
#include "tools/showFolder.h"

#include <filesystem>
#include <string>
#include <system_error>

// What is written stays where it was asked for, wherever the show lies.
static void goToShow(st_recordJob *job) {
    const std::filesystem::path folder = showFolder();
    if (folder == ".")
        return;
    std::error_code failed;
    for (std::string *path : {&job->film, &job->directory, &job->sheet})
        if (!path->empty() && !failed)
            *path = std::filesystem::absolute(*path, failed).string();
    if (!failed)
        std::filesystem::current_path(folder, failed);
    if (failed)
        failRecording("cannot go to the show in " + folder.string() + ": " + failed.message());
}

// The driver would wait for such a model for ever.
static void refuseEndlessModels() {
    for (const st_modelPath &path : MODEL_PATHS) {
        const st_modelFile model = openModel(path.path);
        if (model.object == nullptr) // that is the driver's to say
            continue;
        for (const st_finding &finding : checkLoading(model))
            failRecording(findingLine(model.path, finding));
    }
}

int main(int argc, char **argv) {
    st_recordJob job = readRecordOptions(argc, argv);
    goToShow(&job);
    refuseEndlessModels();
    offscreenScreen(job.size.width, job.size.height, job.samples);
    return job.film.empty() ? recordPictures(job, argc, argv) : recordFilm(job, argc, argv);
}
