// What moves: the sun, three clouds, three wheels of greetings and the scroll text. Blocks
// stand inside a pushed matrix.
#include "driver/testRender.h"

#include <GL/gl.h>

#include <cmath>

// First frames.
constexpr float CLOUDS_START = 1360.0F;
constexpr float SUN_START = 1600.0F;
constexpr float SUN_PARKED = 5100.0F;
constexpr float ROLL_1_START = 5860.0F;
constexpr float ROLL_2_START = 9460.0F;
constexpr float ROLL_3_START = 13060.0F;
constexpr float ROLL_END = 16660.0F;

static void moveSpotTo(double x) {
    lightPosition[0] = static_cast<float>(x);
    glLightfv(GL_LIGHT1, GL_POSITION, lightPosition);
}

void run_sol(float f) {
    if (f < SUN_START)
        return;
    glPushMatrix();
    {
        if (f < SUN_PARKED) {
            const double x = (f - 1000.0 - 600.0) * 0.001;
            moveSpotTo(x - 2.0);
            glTranslatef(static_cast<float>(x), 0.0F, 0.0F);
        } else {
            moveSpotTo(1.5);
            glTranslatef(3.5F, 0.0F, 0.0F);
        }
        drawModel(&obj9);
    }
    glPopMatrix();
}

void run_moln1(float f) {
    if (f < CLOUDS_START)
        return;
    glPushMatrix();
    {
        glTranslatef(static_cast<float>(5.0 * std::sin((f - 1000.0) * 0.005)), 0.0F, 0.0F);
        drawModel(&obj2);
    }
    glPopMatrix();
}

void run_moln2(float f) {
    if (f < CLOUDS_START)
        return;
    glPushMatrix();
    {
        glTranslatef(static_cast<float>(-5.0 * std::sin((f - 1000.0) * 0.003)), 0.0F, 0.0F);
        drawModel(&obj3);
    }
    glPopMatrix();
}

void run_gubbenimolnet(float f) {
    if (f < CLOUDS_START)
        return;
    const float sinceFlyIn = f - 1000.0F;
    glPushMatrix();
    {
        glTranslatef(-0.5F, 0.0F, 0.0F);
        glTranslatef(static_cast<float>(-5.0 * std::sin(0.001 * sinceFlyIn)), 0.0F, 0.0F);
        drawModel(&obj4);
    }
    glPopMatrix();
}

// A tenth of a degree a frame; each wheel stands upright at the frame given as upright.
static void roll(float f, float upright) {
    glRotatef(static_cast<float>(0.1 * (static_cast<double>(upright) - f)), 0.0F, 0.0F, 1.0F);
}

void rulla_greetz1(float f) {
    if (f < ROLL_1_START)
        return;
    glPushMatrix();
    {
        glTranslatef(2.4F, -1.4F, -1.25F);
        if (f < ROLL_2_START) {
            roll(f, ROLL_1_START);
            drawModel(&obj7);
        } else if (f < ROLL_3_START) {
            roll(f, ROLL_3_START);
            drawModel(&obj8);
        } else {
            if (f < ROLL_END)
                roll(f, ROLL_END);
            drawModel(&obj10);
        }
    }
    glPopMatrix();
}

void rulla_scroller(float f) {
    if (f < CLOUDS_START)
        return;
    glPushMatrix();
    {
        glTranslatef(static_cast<float>((f - 1000.0 - 600.0) * 0.02), 0.0F, 0.0F);
        drawModel(&obj11);
    }
    glPopMatrix();
}
