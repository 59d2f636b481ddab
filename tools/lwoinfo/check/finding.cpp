// Findings as lines for people.
#include "tools/lwoinfo/check/finding.h"

#include "tools/lwoinfo/plainText.h"

std::string findingLine(const std::string &path, const st_finding &finding) {
    std::string line = printable(path) + ": " + (finding.isNote ? "note: " : "") + finding.what +
                       ": " + finding.consequence;
    if (!finding.remedy.empty())
        line += "; " + finding.remedy;
    return line;
}
