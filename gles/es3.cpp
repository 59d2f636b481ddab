// The table filled by name.
#include "gles/es3.h"

template <typename FUNCTION> static bool fill(FUNCTION *field, es3Function function) {
    *field = reinterpret_cast<FUNCTION>(function);
    return function != nullptr;
}

bool fillEs3(st_es3 *es3, es3Function (*find)(const char *name)) {
    bool complete = true;
#define ES3_FILL(NAME) complete = fill(&es3->NAME, find("gl" #NAME)) && complete;
    ES3_NAMES(ES3_FILL)
#undef ES3_FILL
    return complete;
}
