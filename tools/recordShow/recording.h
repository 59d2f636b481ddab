// Runs the show off-screen and keeps what a job asks for. From the show's folder, once in a
// process:
//
//   return job.film.empty() ? recordPictures(job, argc, argv) : recordFilm(job, argc, argv);
//
// Every frame is stepped, so a frame is the same however a film or a list was cut; those not
// wanted are not drawn. What fails ends the process with one line on standard error and status 1.
#pragma once

#include "tools/recordShow/options.h"

// 0, or 128 and the signal's number when Ctrl-C (or SIGTERM, SIGHUP) ended the film early.
int recordFilm(const st_recordJob &job, int argc, char **argv);

// Writes stills, a contact sheet or both. 0.
int recordPictures(const st_recordJob &job, int argc, char **argv);
