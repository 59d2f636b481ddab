// The entry point stands alone, so that other programs can link the rest of the driver.
#include "driver/testRender.h"

int main(int argc, char **argv) {
    return runShow(argc, argv);
}
