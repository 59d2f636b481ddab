// Small scenes of what gles/ covers, each drawn in a fresh context. This program is built twice,
// for the desktop's OpenGL and for gles/, whose pictures are then compared.
//   scenes NAME PICTURE.png
#include "hosts/offscreen/context.h"
#include "hosts/offscreen/pngFile.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <GL/glu.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <vector>

constexpr int WIDTH = 200;
constexpr int HEIGHT = 150;

// A bumpy sheet of quads: colour of 4, normal of 3 (not of length 1), position of 3.
constexpr int SIDE = 24;
constexpr int FLOATS = 10;

static std::vector<float> makeSheet(float size) {
    std::vector<float> sheet;
    const auto addCorner = [&](int column, int row) {
        const float x = (static_cast<float>(column) / SIDE - 0.5F) * size;
        const float y = (static_cast<float>(row) / SIDE - 0.5F) * size;
        const float values[FLOATS] = {0.5F + x / size,
                                      0.5F + y / size,
                                      0.9F - x / size,
                                      1.0F,
                                      -0.6F * std::cos(3.0F * x) * std::sin(4.0F * y),
                                      -0.8F * std::sin(3.0F * x) * std::cos(4.0F * y),
                                      1.7F,
                                      x,
                                      y,
                                      0.2F * std::sin(3.0F * x) * std::sin(4.0F * y)};
        sheet.insert(sheet.end(), values, values + FLOATS);
    };
    for (int row = 0; row < SIDE; row++)
        for (int column = 0; column < SIDE; column++) {
            addCorner(column, row);
            addCorner(column + 1, row);
            addCorner(column + 1, row + 1);
            addCorner(column, row + 1);
        }
    return sheet;
}

static void drawSheet(float size) {
    const std::vector<float> sheet = makeSheet(size);
    glInterleavedArrays(GL_C4F_N3F_V3F, 0, sheet.data());
    glDrawArrays(GL_QUADS, 0, SIDE * SIDE * 4);
}

static void placeEye(float pitch, float yaw) {
    glMatrixMode(GL_PROJECTION);
    gluPerspective(45.0, static_cast<double>(WIDTH) / HEIGHT, 0.5, 50.0);
    glMatrixMode(GL_MODELVIEW);
    glTranslatef(0.0F, 0.1F, -4.0F);
    glRotatef(pitch, 1.0F, 0.0F, 0.0F);
    glRotatef(yaw, 0.2F, 1.0F, 0.1F);
}

// --------------------------------------------------------------------------- lighting

static void drawSpot() {
    const float position[4] = {0.5F, 0.3F, 2.5F, 1.0F};
    const float direction[3] = {-0.2F, 0.0F, -3.0F};
    const float color[4] = {1.5F, 0.9F, 0.6F, 1.0F};
    const float dim[4] = {0.3F, 0.1F, 0.1F, 1.0F};
    placeEye(-20.0F, 25.0F);
    glLightfv(GL_LIGHT3, GL_POSITION, position);
    glLightfv(GL_LIGHT3, GL_SPOT_DIRECTION, direction);
    glLightfv(GL_LIGHT3, GL_DIFFUSE, color);
    glLightfv(GL_LIGHT3, GL_AMBIENT, dim);
    glLightf(GL_LIGHT3, GL_SPOT_CUTOFF, 30.0F);
    glLightf(GL_LIGHT3, GL_SPOT_EXPONENT, 4.0F);
    glLightf(GL_LIGHT3, GL_CONSTANT_ATTENUATION, 0.3F);
    glLightf(GL_LIGHT3, GL_LINEAR_ATTENUATION, 0.6F);
    glLightf(GL_LIGHT3, GL_QUADRATIC_ATTENUATION, 0.1F);
    glEnable(GL_LIGHT3);
    glEnable(GL_LIGHT0);
    glEnable(GL_LIGHTING);
    glEnable(GL_NORMALIZE);
    glScalef(1.0F, 0.7F, 0.4F);
    glColorMaterial(GL_FRONT, GL_AMBIENT_AND_DIFFUSE);
    glEnable(GL_COLOR_MATERIAL);
    drawSheet(3.0F);
}

static void drawShine(bool localViewer) {
    const float left[4] = {-2.0F, 1.0F, 2.0F, 0.0F};
    const float near[4] = {0.5F, 0.5F, -2.0F, 1.0F};
    const float white[4] = {0.8F, 0.8F, 0.8F, 1.0F};
    const float red[4] = {0.3F, 0.1F, 0.1F, 0.5F};
    const float faint[4] = {0.05F, 0.1F, 0.2F, 1.0F};
    glLightfv(GL_LIGHT1, GL_POSITION, near);
    glLightfv(GL_LIGHT1, GL_SPECULAR, white);
    glLightfv(GL_LIGHT0, GL_POSITION, left);
    placeEye(-30.0F, 15.0F);
    glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, white);
    glMaterialfv(GL_FRONT, GL_DIFFUSE, red);
    glMaterialfv(GL_FRONT, GL_EMISSION, faint);
    glMaterialf(GL_FRONT, GL_SHININESS, 12.0F);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, white);
    glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, localViewer ? 1 : 0);
    glEnable(GL_LIGHT0);
    glEnable(GL_LIGHT1);
    glEnable(GL_LIGHTING);
    glEnable(GL_NORMALIZE);
    drawSheet(3.0F);
}

// Normals as they are, emission in the vertices' colours, faces in one colour each.
static void drawFlat() {
    placeEye(-40.0F, 0.0F);
    glEnable(GL_LIGHT0);
    glEnable(GL_LIGHTING);
    glColorMaterial(GL_FRONT_AND_BACK, GL_EMISSION);
    glEnable(GL_COLOR_MATERIAL);
    const float dark[4] = {0.1F, 0.1F, 0.1F, 1.0F};
    glMaterialfv(GL_FRONT, GL_DIFFUSE, dark);
    glShadeModel(GL_FLAT);
    drawSheet(3.0F);
    glDisable(GL_LIGHTING);
    glBegin(GL_TRIANGLES);
    for (int i = 0; i < 6; i++) {
        glColor4f(i % 2 == 0 ? 1.3F : 0.1F, i % 3 == 0 ? 0.9F : -0.2F, 0.5F, 1.0F);
        glVertex3f(-1.5F + 0.5F * static_cast<float>(i), i % 2 == 0 ? 1.0F : 1.6F, 0.7F);
    }
    glEnd();
}

// Whatever follows the colour keeps it when it no longer does, and nothing else sets it meanwhile;
// what is to follow it has it at once.
static void drawKeptColor() {
    const float blue[4] = {0.1F, 0.2F, 0.9F, 1.0F};
    placeEye(-20.0F, 0.0F);
    glEnable(GL_LIGHT0);
    glEnable(GL_LIGHTING);
    glEnable(GL_NORMALIZE);
    glColor3f(0.2F, 0.9F, 0.3F);
    glEnable(GL_COLOR_MATERIAL);
    glDisable(GL_COLOR_MATERIAL);
    glColor3f(0.9F, 0.1F, 0.1F);
    glTranslatef(-0.9F, 0.0F, 0.0F);
    drawSheet(1.6F);
    glColor3f(0.4F, 0.3F, 0.1F);
    glEnable(GL_COLOR_MATERIAL);
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, blue);
    glColorMaterial(GL_FRONT, GL_EMISSION);
    glDisable(GL_COLOR_MATERIAL);
    glTranslatef(1.8F, 0.0F, 0.0F);
    drawSheet(1.6F);
}

// ---------------------------------------------------------------------- lines and faces

static void drawLines() {
    placeEye(0.0F, 0.0F);
    const float widths[] = {1.0F, 2.0F, 3.4F, 6.6F};
    for (int i = 0; i < 4; i++) {
        glLineWidth(widths[i]);
        for (int k = 0; k < 12; k++) {
            const float angle = 0.5235988F * static_cast<float>(k) + 0.1F;
            glColor3f(0.3F + 0.2F * static_cast<float>(i), k % 2 == 0 ? 1.0F : 0.4F, 0.6F);
            glBegin(GL_LINES);
            glVertex3f(-1.2F + 0.8F * static_cast<float>(i), 0.3F, 0.0F);
            glVertex3f(-1.2F + 0.8F * static_cast<float>(i) + 0.4F * std::cos(angle),
                       0.3F + 0.4F * std::sin(angle), 0.3F);
            glEnd();
        }
    }
    glBegin(GL_LINES); // from behind the eye
    glVertex3f(-1.0F, -0.8F, -3.0F);
    glVertex3f(2.0F, -1.0F, 6.0F);
    glEnd();
}

static void drawFaces(GLenum front, GLenum back, GLenum culled, float pitch) {
    placeEye(-30.0F, 40.0F);
    glPolygonMode(GL_FRONT, front);
    glPolygonMode(GL_BACK, back);
    glLineWidth(3.0F);
    if (culled != 0) {
        glEnable(GL_CULL_FACE);
        glCullFace(culled);
    }
    glRotatef(pitch, 1.0F, 0.0F, 0.0F);
    drawSheet(2.4F);
    // And one after the other.
    glBegin(GL_QUADS);
    for (int i = 0; i < 12; i++) {
        glColor3f(1.0F, 0.3F, 0.1F * static_cast<float>(i));
        const int quad = i / 4;
        const float x = 0.5F * static_cast<float>(quad) - 0.9F;
        glVertex3f(x + (i % 4 == 1 || i % 4 == 2 ? 0.35F : 0.0F), -1.0F,
                   (i % 4 >= 2 ? 0.6F : 0.1F));
    }
    glEnd();
}

// ---------------------------------------------------------------------------- textures

static void drawTile(float x, float y, float most) {
    glBegin(GL_QUADS);
    for (int i = 0; i < 4; i++) {
        const float right = i == 1 || i == 2 ? 1.0F : 0.0F;
        const float up = i >= 2 ? 1.0F : 0.0F;
        glTexCoord2f(right * most - 0.3F, up * most);
        glVertex3f(x + right * 0.45F, y + up * 0.45F, -0.1F * right);
    }
    glEnd();
}

template <typename CHANNEL>
static void makeTexture(GLint kept, GLenum format, GLenum type, int channels, float most) {
    std::vector<CHANNEL> pixels(std::size_t{8} * 4 * static_cast<std::size_t>(channels));
    for (std::size_t i = 0; i < pixels.size(); i++)
        pixels[i] = static_cast<CHANNEL>(static_cast<float>(i * 37 % 256) / 255.0F * most);
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexImage2D(GL_TEXTURE_2D, 0, kept, 8, 4, 0, format, type, pixels.data());
}

static void setFilters(GLenum target, GLint filter) {
    glTexParameteri(target, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(target, GL_TEXTURE_MAG_FILTER, filter);
}

static void drawTextures() {
    placeEye(10.0F, 10.0F);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glColor4f(1.0F, 0.9F, 0.8F, 0.9F);
    const GLenum formats[] = {GL_RGB, GL_BGR, GL_RGBA, GL_BGRA};
    for (int i = 0; i < 8; i++) {
        const GLenum format = formats[i % 4];
        const int channels = format == GL_RGB || format == GL_BGR ? 3 : 4;
        const GLint kept = i < 4 ? GL_RGBA : GL_RGB;
        if (i % 2 == 0)
            makeTexture<unsigned char>(kept, format, GL_UNSIGNED_BYTE, channels, 255.0F);
        else
            makeTexture<float>(kept, format, GL_FLOAT, channels, 1.2F);
        setFilters(GL_TEXTURE_2D, i % 3 == 0 ? GL_NEAREST : GL_LINEAR);
        if (i >= 4)
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        drawTile(-1.1F + 0.55F * static_cast<float>(i % 4), i < 4 ? 0.1F : -0.5F, 1.6F);
    }
    // Without an image for its filter a texture is none, and leaves the field to a 1-D one.
    makeTexture<unsigned char>(GL_RGBA, GL_RGBA, GL_UNSIGNED_BYTE, 4, 255.0F);
    drawTile(-1.1F, 0.8F, 1.0F);
    GLuint ramp = 0;
    glGenTextures(1, &ramp);
    glBindTexture(GL_TEXTURE_1D, ramp);
    const float shades[4][3] = {{0.1F, 0.2F, 0.9F}, {0.9F, 0.2F, 0.2F}, {1, 1, 0}, {0, 1, 0}};
    setFilters(GL_TEXTURE_1D, GL_NEAREST);
    glTexImage1D(GL_TEXTURE_1D, 0, GL_RGB, 4, 0, GL_RGB, GL_FLOAT, shades);
    glEnable(GL_TEXTURE_1D);
    drawTile(-0.5F, 0.8F, 2.0F);
    setFilters(GL_TEXTURE_2D, GL_NEAREST);
    drawTile(0.1F, 0.8F, 1.0F);
    const unsigned char pixels[2][4] = {{250, 40, 40, 0}, {20, 60, 250, 0}}; // rows of 4 bytes
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, 1, 2, 0, GL_BGR, GL_UNSIGNED_BYTE, pixels);
    drawTile(0.7F, 0.8F, 1.0F);
}

// ------------------------------------------------------------------------------ arrays

// The same triangle in every interleaved layout, and apart, moved a little each time.
static void drawArrays() {
    placeEye(0.0F, 0.0F);
    const struct {
        GLenum format;
        int before; // floats before the position
        int size;   // of the position
    } layouts[] = {{GL_V2F, 0, 2},         {GL_V3F, 0, 3},         {GL_C3F_V3F, 3, 3},
                   {GL_N3F_V3F, 3, 3},     {GL_T2F_V3F, 2, 3},     {GL_C4F_N3F_V3F, 7, 3},
                   {GL_T2F_C3F_V3F, 5, 3}, {GL_T2F_N3F_V3F, 5, 3}, {GL_T2F_C4F_N3F_V3F, 9, 3}};
    makeTexture<unsigned char>(GL_RGB, GL_RGB, GL_UNSIGNED_BYTE, 3, 255.0F);
    setFilters(GL_TEXTURE_2D, GL_LINEAR);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_LIGHT0);
    glEnable(GL_COLOR_MATERIAL);
    float x = -1.9F;
    for (const auto &layout : layouts) {
        std::vector<float> values(5, 9.0F); // skipped by the first vertex
        const int stride = layout.before + layout.size + 2;
        values.resize(static_cast<std::size_t>(stride) * 4, 0.4F);
        for (int i = 1; i < 4; i++) {
            float *vertex = values.data() + i * stride;
            for (int k = 0; k < layout.before; k++)
                vertex[k] = 0.2F * static_cast<float>((i + k) % 4);
            vertex[layout.before] = x + 0.36F * static_cast<float>(i % 2);
            vertex[layout.before + 1] = i == 3 ? 0.8F : 0.2F;
            if (layout.size == 3)
                vertex[layout.before + 2] = 0.1F;
        }
        (layout.before % 2 == 0 ? glDisable : glEnable)(GL_LIGHTING);
        glColor3f(0.9F, 0.8F, 0.3F);
        glNormal3f(0.3F, 0.3F, 0.9F);
        glTexCoord2f(0.3F, 0.7F);
        glInterleavedArrays(layout.format, stride * static_cast<int>(sizeof(float)), values.data());
        glDrawArrays(GL_TRIANGLES, 1, 3);
        x += 0.41F;
    }
    const float positions[] = {-3, -2, 0, 2, 0, -2, 0, 2, 0, 0.4F, 0, 2};
    const float colors[] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    const float coords[] = {0.0F, 0.4F, 0.9F};
    glDisable(GL_LIGHTING);
    glDisableClientState(GL_NORMAL_ARRAY);
    glVertexPointer(4, GL_FLOAT, 0, positions);
    glColorPointer(3, GL_FLOAT, 0, colors);
    glEnableClientState(GL_COLOR_ARRAY);
    glTexCoordPointer(1, GL_FLOAT, 0, coords);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glDrawArrays(GL_TRIANGLES, 0, 3);
}

// Bent quads, wholly in view and reaching out of it.
static void drawBentQuads() {
    placeEye(0.0F, 0.0F);
    const float size[] = {1.0F, 5.0F};
    for (const float s : size) {
        std::vector<float> values;
        for (int i = 0; i < 4; i++) {
            const float corner[] = {0.3F * static_cast<float>(i),
                                    i % 2 == 0 ? 0.9F : 0.2F,
                                    0.6F,
                                    (i == 1 || i == 2 ? s : 0.0F) - 1.2F,
                                    (i >= 2 ? 0.8F : 0.0F) - (s > 1.0F ? 1.0F : 0.0F),
                                    i == 0 ? 0.8F : 0.0F};
            values.insert(values.end(), corner, corner + 6);
        }
        glInterleavedArrays(GL_C3F_V3F, 0, values.data());
        glDrawArrays(GL_QUADS, 0, 4);
    }
}

// ------------------------------------------------------------------------------- program

static const struct {
    const char *name;
    void (*draw)();
} SCENES[] = {{"spot", drawSpot},
              {"shineFromAfar", [] { drawShine(false); }},
              {"shineFromNear", [] { drawShine(true); }},
              {"flat", drawFlat},
              {"keptColor", drawKeptColor},
              {"lines", drawLines},
              {"frontLines", [] { drawFaces(GL_LINE, GL_FILL, 0, 70.0F); }},
              {"backLines",
               [] {
                   glShadeModel(GL_FLAT);
                   drawFaces(GL_FILL, GL_LINE, GL_FRONT, -80.0F);
               }},
              {"textures", drawTextures},
              {"arrays", drawArrays},
              {"bentQuads", drawBentQuads}};

int main(int argc, char **argv) {
    for (const auto &scene : SCENES) {
        if (argc != 3 || std::strcmp(scene.name, argv[1]) != 0)
            continue;
        makeOffscreenContext(WIDTH, HEIGHT);
        glClearColor(0.1F, 0.1F, 0.3F, 1.0F);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glEnable(GL_DEPTH_TEST);
        scene.draw();
        const GLenum error = glGetError();
        if (error != GL_NO_ERROR)
            std::fprintf(stderr, "scenes: OpenGL error 0x%x\n", error);
        const std::vector<unsigned char> rgb = readPicture(WIDTH, HEIGHT);
        return error == GL_NO_ERROR && writePng(argv[2], WIDTH, HEIGHT, rgb.data()) ? 0 : 1;
    }
    return 2;
}
