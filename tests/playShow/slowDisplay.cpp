// Loaded ahead of the OpenGL libraries: every picture takes a fifth of a second to show.
#include <unistd.h>

#include <dlfcn.h>

using swapFunction = void (*)(void *display, unsigned long drawable);

extern "C" void glXSwapBuffers(void *display, unsigned long drawable);

void glXSwapBuffers(void *display, unsigned long drawable) {
    static const auto real = reinterpret_cast<swapFunction>(dlsym(RTLD_NEXT, "glXSwapBuffers"));
    usleep(200000);
    real(display, drawable);
}
