// recordShow: the show drawn off-screen by the driver itself, as a film with its sound or as
// pictures; see options.cpp for how to call it.
#include "hosts/offscreen/glutCalls.h"
#include "tools/endlessModels.h"
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

int main(int argc, char **argv) {
    st_recordJob job = readRecordOptions(argc, argv);
    goToShow(&job);
    const std::string endless = endlessModel();
    if (!endless.empty())
        failRecording(endless);
    offscreenScreen(job.size.width, job.size.height, job.samples);
    return job.film.empty() ? recordPictures(job, argc, argv) : recordFilm(job, argc, argv);
}
