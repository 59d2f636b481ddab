// A signal's handler may do next to nothing: the names of what it removes are there before the
// first file is, and do not change until the last one is gone.
#include "tools/lwoconvert/outputFiles.h"

#include "checker/plainText.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

static const int SIGNALS[] = {SIGINT, SIGTERM, SIGHUP};

static const std::vector<std::string> *partsToRemove = nullptr; // for the handler alone

static void removeParts(const std::vector<std::string> &parts) {
    for (const std::string &part : parts)
        unlink(part.c_str());
}

static void endBySignal(int number) {
    if (partsToRemove != nullptr)
        removeParts(*partsToRemove);
    std::signal(number, SIG_DFL);
    std::raise(number);
}

static void watchSignals(const std::vector<std::string> *parts) {
    partsToRemove = parts;
    for (const int number : SIGNALS)
        if (std::signal(number, parts != nullptr ? endBySignal : SIG_DFL) == SIG_IGN)
            std::signal(number, SIG_IGN);
}

static void holdSignals(bool isHeld) {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : SIGNALS)
        sigaddset(&signals, number);
    sigprocmask(isHeld ? SIG_BLOCK : SIG_UNBLOCK, &signals, nullptr);
}

// "" or why not.
static std::string writePart(const std::string &path, const std::string &bytes) {
    constexpr mode_t ANYONES = 0666; // as far as the user lets them
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, ANYONES);
    std::FILE *file = descriptor < 0 ? nullptr : fdopen(descriptor, "wb");
    if (file == nullptr)
        return std::strerror(errno);
    const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    std::string problem = isWritten ? "" : std::strerror(errno);
    if (std::fclose(file) != 0 && problem.empty())
        return std::strerror(errno);
    return problem;
}

static std::string cannotWrite(const std::string &path, const std::string &reason) {
    return "cannot write " + printable(path) + ": " + reason;
}

static std::string writeParts(const std::vector<st_outputFile> &files,
                              const std::vector<std::string> &parts) {
    for (std::size_t i = 0; i < files.size(); i++)
        if (const std::string problem = writePart(parts[i], files[i].bytes); !problem.empty())
            return cannotWrite(files[i].path, problem);
    return "";
}

// Takes back what it can when one cannot be moved.
static std::string moveParts(const std::vector<st_outputFile> &files,
                             const std::vector<std::string> &parts) {
    std::vector<std::string> added;
    for (std::size_t i = 0; i < files.size(); i++) {
        std::error_code ignored;
        const bool isNew = !std::filesystem::exists(files[i].path, ignored);
        if (std::rename(parts[i].c_str(), files[i].path.c_str()) != 0) {
            const std::string reason = std::strerror(errno);
            removeParts(added);
            return cannotWrite(files[i].path, reason);
        }
        if (isNew)
            added.push_back(files[i].path);
    }
    return "";
}

std::string writeFiles(const std::vector<st_outputFile> &files) {
    std::vector<std::string> parts;
    parts.reserve(files.size());
    for (const st_outputFile &file : files)
        parts.push_back(file.path + ".part" + std::to_string(getpid()));
    watchSignals(&parts);
    std::string problem = writeParts(files, parts);
    holdSignals(true);
    if (problem.empty())
        problem = moveParts(files, parts);
    removeParts(parts);
    watchSignals(nullptr);
    holdSignals(false);
    return problem;
}
