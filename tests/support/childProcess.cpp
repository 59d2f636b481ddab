#include "tests/support/childProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

constexpr auto PATIENCE = std::chrono::minutes(2);
constexpr auto PAUSE = std::chrono::milliseconds(20);

// In the child: becomes the program, or ends with status 127.
[[noreturn]] static void become(std::vector<std::string> arguments, const std::string &directory,
                                const std::vector<std::string> &environment,
                                const std::string &output) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    dup2(file, STDOUT_FILENO);
    dup2(file, STDERR_FILENO);
    for (const std::string &setting : environment) {
        const std::size_t equals = setting.find('=');
        setenv(setting.substr(0, equals).c_str(), setting.substr(equals + 1).c_str(), 1);
    }
    std::vector<char *> words;
    words.reserve(arguments.size() + 1);
    for (std::string &argument : arguments)
        words.push_back(argument.data());
    words.push_back(nullptr);
    if (chdir(directory.c_str()) == 0)
        execvp(words[0], words.data());
    _exit(127);
}

Child startChild(const std::vector<std::string> &arguments, const std::string &directory,
                 const std::vector<std::string> &environment, const std::string &output) {
    Child child;
    child.pid = fork();
    if (child.pid == 0)
        become(arguments, directory, environment, output);
    return child;
}

int waitChild(Child &child) {
    int status = 0;
    const bool ended = waitUntil([&] { return waitpid(child.pid, &status, WNOHANG) == child.pid; });
    if (!ended) {
        signalChild(child, SIGKILL);
        waitpid(child.pid, &status, 0);
    }
    child.pid = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

void signalChild(const Child &child, int signal) {
    if (child.pid > 0)
        kill(child.pid, signal);
}

int runChild(const std::vector<std::string> &arguments, const std::string &directory,
             const std::vector<std::string> &environment, const std::string &output) {
    Child child = startChild(arguments, directory, environment, output);
    return waitChild(child);
}

std::string readText(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

bool waitUntil(const std::function<bool()> &done) {
    const auto deadline = std::chrono::steady_clock::now() + PATIENCE;
    while (std::chrono::steady_clock::now() < deadline) {
        if (done())
            return true;
        std::this_thread::sleep_for(PAUSE);
    }
    return done();
}
