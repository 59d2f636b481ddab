// Findings as lines for people.
#include "checker/finding.h"

#include "checker/plainText.h"

std::string findingLine(const std::string &path, const st_finding &finding) {
    std::string line = printable(path) + ": " + (finding.isNote ? "note: " : "") + finding.what +
                       ": " + finding.consequence;
    if (!finding.remedy.empty())
        line += "; " + finding.remedy;
    return line;
}
