// FreeType outlines are flattened to contours in ems, filled once per character and tolerance,
// and then set letter by letter.
#include "workshop/text.h"

#include "workshop/letters.h"
#include "workshop/stop.h"
#include "workshop/tessellate.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <cmath>
#include <map>

struct st_glyph {
    float advance; // in ems
    std::vector<st_outline> contours;
    st_flatMesh face;
};

struct st_flattening {
    std::vector<st_outline> contours;
    float em;        // font units
    float tolerance; // in ems
};

// The program has one font, open until it ends.
static FT_Face theFont = nullptr;

st_textStyle plainStyle(float size, float depth, const st_surface &face, const st_surface &side) {
    return {size, depth, 0, 0.015F, 0, false, true, face, side};
}

// Cut once for each fineness.
static std::map<std::pair<char32_t, float>, st_glyph> &theGlyphs() {
    static std::map<std::pair<char32_t, float>, st_glyph> glyphs;
    return glyphs;
}

bool openFont(const std::string &path) {
    static FT_Library library = nullptr;
    if (library == nullptr && FT_Init_FreeType(&library) != 0)
        stop("cannot start FreeType");
    theGlyphs().clear();
    FT_Done_Face(theFont);
    theFont = nullptr;
    // Bitmaps, and symbols without Unicode, cannot be cut out by their letters.
    return FT_New_Face(library, path.c_str(), 0, &theFont) == 0 && FT_IS_SCALABLE(theFont) &&
           theFont->charmap != nullptr;
}

bool fontHas(char32_t letter) {
    return theFont != nullptr && FT_Get_Char_Index(theFont, letter) != 0;
}

static st_vec inEms(const FT_Vector *point, const st_flattening &work) {
    return {static_cast<float>(point->x) / work.em, static_cast<float>(point->y) / work.em, 0};
}

static int moveTo(const FT_Vector *to, void *user) {
    auto *work = static_cast<st_flattening *>(user);
    work->contours.push_back({inEms(to, *work)});
    return 0;
}

static int lineTo(const FT_Vector *to, void *user) {
    auto *work = static_cast<st_flattening *>(user);
    work->contours.back().push_back(inEms(to, *work));
    return 0;
}

// As many steps as keep the chord's error below the tolerance: it falls with their square.
static int stepCount(st_vec bend, float tolerance) {
    return std::max(1, static_cast<int>(std::ceil(std::sqrt(lengthOf(bend) / (8 * tolerance)))));
}

static int conicTo(const FT_Vector *control, const FT_Vector *to, void *user) {
    auto *work = static_cast<st_flattening *>(user);
    const st_vec a = work->contours.back().back();
    const st_vec b = inEms(control, *work);
    const st_vec c = inEms(to, *work);
    const int steps = stepCount((a - b * 2 + c) * 2, work->tolerance);
    for (int i = 1; i <= steps; i++) {
        const float t = static_cast<float>(i) / static_cast<float>(steps);
        const float s = 1 - t;
        work->contours.back().push_back(a * (s * s) + b * (2 * s * t) + c * (t * t));
    }
    return 0;
}

static int cubicTo(const FT_Vector *first, const FT_Vector *second, const FT_Vector *to,
                   void *user) {
    auto *work = static_cast<st_flattening *>(user);
    const st_vec a = work->contours.back().back();
    const st_vec b = inEms(first, *work);
    const st_vec c = inEms(second, *work);
    const st_vec d = inEms(to, *work);
    const st_vec bendA = (a - b * 2 + c) * 6;
    const st_vec bendB = (b - c * 2 + d) * 6;
    const int steps = stepCount(lengthOf(bendA) > lengthOf(bendB) ? bendA : bendB, work->tolerance);
    for (int i = 1; i <= steps; i++) {
        const float t = static_cast<float>(i) / static_cast<float>(steps);
        const float s = 1 - t;
        work->contours.back().push_back(a * (s * s * s) + b * (3 * s * s * t) +
                                        c * (3 * s * t * t) + d * (t * t * t));
    }
    return 0;
}

static float distanceToChord(st_vec point, st_vec a, st_vec b) {
    const st_vec chord = b - a;
    const float length = lengthOf(chord);
    return length > 0 ? std::fabs(crossProduct(chord, point - a).z) / length : lengthOf(point - a);
}

// Keeps what the outline from first to last needs to stay within the tolerance, without last.
static void keepNeeded(const st_outline &outline, std::size_t first, std::size_t last,
                       float tolerance, st_outline &kept) {
    const std::size_t count = outline.size();
    std::size_t farthest = first;
    float distance = tolerance;
    for (std::size_t i = first + 1; i < last; i++) {
        const float away = distanceToChord(outline[i], outline[first], outline[last % count]);
        if (away > distance) {
            distance = away;
            farthest = i;
        }
    }
    if (farthest == first) {
        kept.push_back(outline[first]);
        return;
    }
    keepNeeded(outline, first, farthest, tolerance, kept);
    keepNeeded(outline, farthest, last, tolerance, kept);
}

// The outline with as few points as the tolerance allows: each costs two polygons.
static st_outline simplified(const st_outline &outline, float tolerance) {
    std::size_t opposite = 0;
    for (std::size_t i = 0; i < outline.size(); i++)
        if (lengthOf(outline[i] - outline[0]) > lengthOf(outline[opposite] - outline[0]))
            opposite = i;
    st_outline kept;
    keepNeeded(outline, 0, opposite, tolerance, kept);
    keepNeeded(outline, opposite, outline.size(), tolerance, kept);
    return kept;
}

// The letter as the font has it, in its units, until the next is loaded.
static FT_Outline &loadOutline(char32_t letter) {
    if (theFont == nullptr)
        stop("text is set before a font is open");
    const FT_UInt index = FT_Get_Char_Index(theFont, letter);
    if (index == 0 || FT_Load_Glyph(theFont, index, FT_LOAD_NO_SCALE) != 0)
        stop("the font has no letter " + sayLetter(letter));
    return theFont->glyph->outline;
}

static st_glyph loadGlyph(char32_t letter, float tolerance) {
    FT_Outline &outline = loadOutline(letter);
    const auto em = static_cast<float>(theFont->units_per_EM);
    st_flattening work = {{}, em, tolerance / 4};
    const FT_Outline_Funcs draw = {moveTo, lineTo, conicTo, cubicTo, 0, 0};
    if (FT_Outline_Decompose(&outline, &draw, &work) != 0)
        stop("the font's letter " + sayLetter(letter) + " is broken");
    st_glyph glyph = {static_cast<float>(theFont->glyph->metrics.horiAdvance) / em, {}, {}};
    // The strokes of a letter may overlap in the font.
    for (const auto &contour : unitedOutlines(work.contours))
        if (const st_outline kept = simplified(contour, tolerance); kept.size() > 2)
            glyph.contours.push_back(kept);
    glyph.face = tessellate(glyph.contours);
    return glyph;
}

static const st_glyph &glyphOf(char32_t letter, float tolerance) {
    const auto found = theGlyphs().find({letter, tolerance});
    if (found != theGlyphs().end())
        return found->second;
    return theGlyphs()
        .emplace(std::make_pair(letter, tolerance), loadGlyph(letter, tolerance))
        .first->second;
}

static void addFace(st_mesh &mesh, int surface, const st_flatMesh &face, st_vec pen,
                    const st_textStyle &style, bool front) {
    const int first = static_cast<int>(mesh.points.size());
    const float z = front ? style.depth / 2 : -style.depth / 2;
    for (const st_vec &point : face.points)
        addPoint(mesh, pen + point * style.size + st_vec{0, 0, z});
    for (const st_flatPolygon &flat : face.polygons) {
        st_polygon polygon = {surface, flat.cornerCount, {}, {}};
        for (int i = 0; i < flat.cornerCount; i++) {
            const int corner = flat.points[front ? i : flat.cornerCount - 1 - i];
            const st_vec at = face.points[static_cast<std::size_t>(corner)];
            polygon.points[i] = first + corner;
            // Other fonts may reach farther than the picture does.
            polygon.uvs[i] = {at.x, std::clamp(at.y * 0.8F + 0.2F, 0.01F, 0.99F)};
        }
        mesh.polygons.push_back(polygon);
    }
}

// The corner pushed out of the letter by `by`, along the bisector of its two edges.
static st_vec pushedOut(const st_outline &contour, std::size_t i, float by) {
    const std::size_t count = contour.size();
    const st_vec before = unit(contour[i] - contour[(i + count - 1) % count]);
    const st_vec after = unit(contour[(i + 1) % count] - contour[i]);
    const st_vec out = unit({before.y + after.y, -before.x - after.x, 0});
    const float sharpness = std::max(0.5F, dotProduct(out, {after.y, -after.x, 0}));
    return contour[i] + out * (by / sharpness);
}

// Whether the side from corner i on is built. A wall looks to the right of its way: down, where
// that way leads to the right.
static bool hasWall(const st_outline &contour, std::size_t i, const st_textStyle &style) {
    const st_vec along = contour[(i + 1) % contour.size()] - contour[i];
    return style.undersides || along.x <= 0.4F * lengthOf(along);
}

// Rings of points around a contour, joined by quads: front, shoulders (with a bevel), back.
static void addSides(st_mesh &mesh, int surface, const st_outline &contour, st_vec pen,
                     const st_textStyle &style) {
    struct st_level {
        float out, z;
    };
    const float half = style.depth / 2;
    std::vector<st_level> levels = {{0, -half}, {0, half}};
    if (style.bevel > 0)
        levels = {{0, -half}, {1, -half + style.bevel}, {1, half - style.bevel}, {0, half}};
    const int count = static_cast<int>(contour.size());
    const int first = static_cast<int>(mesh.points.size());
    for (const st_level &level : levels)
        for (std::size_t i = 0; i < contour.size(); i++)
            addPoint(mesh,
                     pen +
                         pushedOut(contour, i, level.out * style.bevel / style.size) * style.size +
                         st_vec{0, 0, level.z});
    for (int row = 0; row + 1 < static_cast<int>(levels.size()); row++)
        for (int i = 0; i < count; i++) {
            if (!hasWall(contour, static_cast<std::size_t>(i), style))
                continue;
            const int a = first + row * count + i;
            const int b = first + row * count + (i + 1) % count;
            addQuad(mesh, surface, a, b, b + count, a + count);
        }
}

st_mesh textShape(const std::string &line, const st_textStyle &style) {
    st_mesh mesh;
    const int face = addSurface(mesh, style.face);
    const int side = addSurface(mesh, style.side);
    st_vec pen = {0, 0, 0};
    for (const char32_t letter : lettersOf(line)) {
        const st_glyph &glyph = glyphOf(letter, style.tolerance);
        addFace(mesh, face, glyph.face, pen, style, true);
        if (style.back)
            addFace(mesh, face, glyph.face, pen, style, false);
        for (const auto &contour : glyph.contours)
            addSides(mesh, side, contour, pen, style);
        pen.x += (glyph.advance + style.tracking) * style.size;
    }
    return mesh;
}

std::size_t polygonCount(const std::string &line, const st_textStyle &style) {
    std::size_t count = 0;
    for (const char32_t letter : lettersOf(line)) {
        const st_glyph &glyph = glyphOf(letter, style.tolerance);
        count += glyph.face.polygons.size() * (style.back ? 2 : 1);
        for (const st_outline &contour : glyph.contours)
            for (std::size_t i = 0; i < contour.size(); i++)
                if (hasWall(contour, i, style))
                    count += style.bevel > 0 ? 3 : 1;
    }
    return count;
}

st_extent textExtent(const std::string &line, float tracking) {
    st_extent extent = {0, 0, 0, 0, 0};
    bool inked = false;
    for (const char32_t letter : lettersOf(line)) {
        FT_Outline &outline = loadOutline(letter);
        const auto em = static_cast<float>(theFont->units_per_EM);
        FT_BBox box = {};
        FT_Outline_Get_CBox(&outline, &box);
        if (outline.n_points > 0) {
            const st_extent ink = {extent.advance + static_cast<float>(box.xMin) / em,
                                   static_cast<float>(box.yMin) / em,
                                   extent.advance + static_cast<float>(box.xMax) / em,
                                   static_cast<float>(box.yMax) / em, 0};
            extent = {inked ? extent.left : ink.left,
                      inked ? std::min(extent.bottom, ink.bottom) : ink.bottom, ink.right,
                      inked ? std::max(extent.top, ink.top) : ink.top, extent.advance};
            inked = true;
        }
        extent.advance += static_cast<float>(theFont->glyph->metrics.horiAdvance) / em + tracking;
    }
    return extent;
}
