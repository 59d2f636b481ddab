// Models of the show that the driver would load for ever, for programs that stand beneath it.
#pragma once

#include <string>

// One line that names such a model among those in lwo/ of the working directory, its surface, and
// what to do; "" when there is none. What cannot be read is left for the driver to say.
std::string endlessModel();
