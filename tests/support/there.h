// Ends a test that would go on with nothing.
//   const Object object = there(loadLWO2(chunks));
#pragma once

#include <stdexcept>

template <typename Pointer> Pointer there(Pointer pointer) {
    if (pointer == nullptr)
        throw std::runtime_error("there is nothing");
    return pointer;
}
