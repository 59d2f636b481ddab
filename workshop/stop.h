// The one way out when the set cannot be made.
#pragma once

#include <string>

// Prints "makeSet: " and the reason as one line on standard error and ends with status 1.
[[noreturn]] void stop(const std::string &reason);
