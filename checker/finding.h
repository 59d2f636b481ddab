// What the check says of a model.
#pragma once

#include <string>

// Texts are UTF-8, without line ends and full stops.
struct st_finding {
    std::string rule; // which rule found it, such as "uv-map"
    // Not a fault of the model: the renderer leaves such a thing out of every model.
    bool isNote;
    std::string what;
    std::string consequence;
    std::string remedy; // "" when there is none
};

// "FILE: WHAT: CONSEQUENCE; REMEDY".
std::string findingLine(const std::string &path, const st_finding &finding);
