// Other programs, started by a test and never outliving it.
//
//   Child child = startChild({"testRender"}, directory, {"DISPLAY=:1"}, "out.txt");
//   EXPECT_EQ(waitChild(child), 0);
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

struct Child {
    pid_t pid = -1;
};

// Starts a program (found in PATH) in a directory, with additions to the environment; its
// standard output and error go to the file output. It is killed when the test program ends.
Child startChild(const std::vector<std::string> &arguments, const std::string &directory,
                 const std::vector<std::string> &environment, const std::string &output);

// Waits for its end: the exit status, or 128 + the signal that ended it. One that does not end
// within two minutes is killed, which gives 128 + SIGKILL.
int waitChild(Child &child);

// Sends it a signal.
void signalChild(const Child &child, int signal);

// startChild and waitChild in one.
int runChild(const std::vector<std::string> &arguments, const std::string &directory,
             const std::vector<std::string> &environment, const std::string &output);

// What is in a file; "" when there is none.
std::string readText(const std::string &path);

// Calls done until it returns true. Returns false when it has not within two minutes: a guard
// against hanging, not a claim about speed.
bool waitUntil(const std::function<bool()> &done);
