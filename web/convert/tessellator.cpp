// GLU's tessellator, which no library for browsers has, by libtess: the same one as a script, which
// the program's glue brings along.
#include <GL/glu.h>
#include <emscripten.h>

#include <vector>

struct GLUtesselator {
    void (*takeVertex)(void *vertex, void *polygon);
    void (*takeCombined)(GLdouble position[3], void *vertices[4], GLfloat weights[4], void **result,
                         void *polygon);
    void *polygon;
    double windingRule;
    GLdouble normal[3];
    std::vector<GLdouble> positions;
    std::vector<void *> vertices;
    std::vector<int> contours; // index of each one's first vertex
};

// What the script calls while it divides.
extern "C" {
EMSCRIPTEN_KEEPALIVE void tessTakeVertex(GLUtesselator *tess, void *vertex) {
    tess->takeVertex(vertex, tess->polygon);
}

EMSCRIPTEN_KEEPALIVE void *tessCombine(GLUtesselator *tess, GLdouble *position, void **vertices,
                                       GLfloat *weights) {
    void *result = vertices[0];
    tess->takeCombined(position, vertices, weights, &result, tess->polygon);
    return result;
}
}

// clang-format off
EM_JS(void, divide, (GLUtesselator *tess, const double *positions, void *const *vertices, int count,
                     const int *contours, int contourCount, double windingRule, double x, double y,
                     double z), {
    const script = new libtess.GluTesselator();
    const names = libtess.gluEnum;
    const room = stackSave();
    const position = stackAlloc(24);
    const neighbours = stackAlloc(16);
    const weights = stackAlloc(16);
    script.gluTessCallback(names.GLU_TESS_VERTEX_DATA, (vertex) => _tessTakeVertex(tess, vertex));
    script.gluTessCallback(names.GLU_TESS_COMBINE, (at, four, shares) => {
        HEAPF64.set(at, position >> 3);
        for (let k = 0; k < 4; k++) {
            HEAPU32[(neighbours >> 2) + k] = four[k] || 0;
            HEAPF32[(weights >> 2) + k] = shares[k];
        }
        return _tessCombine(tess, position, neighbours, weights);
    });
    script.gluTessCallback(names.GLU_TESS_EDGE_FLAG, () => {});
    script.gluTessProperty(names.GLU_TESS_WINDING_RULE, windingRule);
    script.gluTessNormal(x, y, z);
    script.gluTessBeginPolygon(null);
    for (let contour = 0; contour < contourCount; contour++) {
        const from = HEAP32[(contours >> 2) + contour];
        const to = contour + 1 < contourCount ? HEAP32[(contours >> 2) + contour + 1] : count;
        script.gluTessBeginContour();
        for (let k = from; k < to; k++) {
            const place = (positions >> 3) + 3 * k;
            script.gluTessVertex([HEAPF64[place], HEAPF64[place + 1], HEAPF64[place + 2]],
                                 HEAPU32[(vertices >> 2) + k]);
        }
        script.gluTessEndContour();
    }
    script.gluTessEndPolygon();
    stackRestore(room);
});
// clang-format on

GLUtesselator *gluNewTess() {
    return new GLUtesselator{nullptr,   nullptr, nullptr, GLU_TESS_WINDING_ODD,
                             {0, 0, 1}, {},      {},      {}};
}

void gluDeleteTess(GLUtesselator *tess) {
    delete tess;
}

// Edge flags are what makes it give single triangles, which it always does here.
void gluTessCallback(GLUtesselator *tess, GLenum which, _GLUfuncptr callback) {
    if (which == GLU_TESS_VERTEX_DATA)
        tess->takeVertex = reinterpret_cast<decltype(tess->takeVertex)>(callback);
    else if (which == GLU_TESS_COMBINE_DATA)
        tess->takeCombined = reinterpret_cast<decltype(tess->takeCombined)>(callback);
}

void gluTessProperty(GLUtesselator *tess, GLenum which, GLdouble value) {
    if (which == GLU_TESS_WINDING_RULE)
        tess->windingRule = value;
}

void gluTessNormal(GLUtesselator *tess, GLdouble x, GLdouble y, GLdouble z) {
    tess->normal[0] = x;
    tess->normal[1] = y;
    tess->normal[2] = z;
}

void gluTessBeginPolygon(GLUtesselator *tess, GLvoid *polygon) {
    tess->polygon = polygon;
    tess->positions.clear();
    tess->vertices.clear();
    tess->contours.clear();
}

void gluTessBeginContour(GLUtesselator *tess) {
    tess->contours.push_back(static_cast<int>(tess->vertices.size()));
}

void gluTessVertex(GLUtesselator *tess, GLdouble *position, GLvoid *vertex) {
    tess->positions.insert(tess->positions.end(), position, position + 3);
    tess->vertices.push_back(vertex);
}

void gluTessEndContour(GLUtesselator * /*tess*/) {}

void gluTessEndPolygon(GLUtesselator *tess) {
    divide(tess, tess->positions.data(), tess->vertices.data(),
           static_cast<int>(tess->vertices.size()), tess->contours.data(),
           static_cast<int>(tess->contours.size()), tess->windingRule, tess->normal[0],
           tess->normal[1], tess->normal[2]);
}
