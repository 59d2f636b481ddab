#include "hosts/window/showClock.h"

#include "driver/testRender.h"
#include "sound/hearing.h"

#include <algorithm>
#include <chrono>

using clock_type = std::chrono::steady_clock;

struct st_showClock {
    bool running = false;
    bool byMusic = false;
    double seconds = 0.0;           // what the clock showed last
    clock_type::time_point shown{}; // when that was
};

static st_showClock showClock;

void startClock(double seconds) {
    showClock.byMusic = playMusicFrom(stream, seconds);
    showClock.running = true;
    showClock.seconds = seconds;
    showClock.shown = clock_type::now();
}

double stopClock() {
    showClock.seconds = clockSeconds();
    showClock.running = false;
    holdMusic();
    return showClock.seconds;
}

double clockSeconds() {
    if (!showClock.running)
        return showClock.seconds;
    double heard = 0.0;
    const clock_type::time_point now = clock_type::now();
    const std::chrono::duration<double> passed = now - showClock.shown;
    showClock.shown = now;
    // Music that has fallen silent, as where its device is gone, leaves the clock to the system.
    showClock.byMusic = showClock.byMusic && musicHeard(&heard);
    showClock.seconds =
        showClock.byMusic ? std::max(heard, showClock.seconds) : showClock.seconds + passed.count();
    return showClock.seconds;
}
