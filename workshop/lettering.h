// How large and how fine the words are set, whatever they are: lines fit their boards, the scroll
// text its way, and all letters together what a frame may cost.
//
//   style.size = fittingSize("VALMORINE", ARROW_ROOM);
//   style.tolerance = finestTolerance({"VALMORINE"}, style, SIGN_LETTERS);
#pragma once

#include "workshop/text.h"

#include <string>
#include <vector>

// Polygons that a frame may cost in the main view, and whose they are: everything that does not
// change with the words, the sign's letters, those of the wheel that is seen, the scroll text.
constexpr std::size_t FRAME_POLYGONS = 25000;
constexpr std::size_t SCENE_POLYGONS = 10450;
constexpr std::size_t SIGN_LETTERS = 600;
constexpr std::size_t WHEEL_LETTERS = 1800;
constexpr std::size_t SCROLL_LETTERS =
    FRAME_POLYGONS - SCENE_POLYGONS - SIGN_LETTERS - WHEEL_LETTERS;
// In front while nothing else of the words is but a wheel.
constexpr std::size_t LOGO_LETTERS = 900; // of one side of six

// Where one line goes, in the units of its model; sizes are of the em square.
struct st_lineRoom {
    float width, height;
    float largest, smallest;
    float tracking; // in ems
};

constexpr st_lineRoom ARROW_ROOM = {1.86F, 0.34F, 0.36F, 0.13F, 0};
constexpr st_lineRoom BOARD_ROOM = {1.60F, 0.25F, 0.32F, 0.13F, 0};
constexpr st_lineRoom LOGO_ROOM = {0.86F, 0.66F, 0.90F, 0.20F, -0.015F};

// The size at which the line fills its room in one direction and stays within it in the other, as
// far as it may grow and has to shrink.
float fittingSize(const std::string &line, const st_lineRoom &room);

// How wide the line's ink is then.
float inkWidth(const std::string &line, const st_lineRoom &room);

// Where the middle of the line's ink is, in ems, from where its pen begins.
st_vec inkMiddle(const std::string &line, float tracking);

// How many letters at the end of the line do not fit even at the smallest size.
std::size_t lettersTooMany(const std::string &line, const st_lineRoom &room);

// The finest letters with which the lines together cost no more; the coarsest where none do.
float finestTolerance(const std::vector<std::string> &lines, st_textStyle style,
                      std::size_t polygons);

// ----------------------------------------------------------------------------- wheels

// A wheel of names: with few of them spokes are wider and letters larger; none has less than three
// spokes, its names come again instead.
struct st_wheelPlan {
    std::vector<std::string> names; // one a spoke
    float breadth;                  // of spokes, where 1 is that of a wheel with `usual` names
};

st_wheelPlan planWheel(std::size_t wheel, std::size_t usual);

constexpr float WHEEL_HUB = 0.70F; // where names begin: nearer, the scroll text hides them
constexpr float WHEEL_RIM = 2.05F; // where the wheel ends

// For names on spokes of that breadth; size: of letters on usual ones.
st_lineRoom spokeRoom(float size, float breadth);
constexpr float SPOKE_LETTERS = 0.33F; // the usual size

// ------------------------------------------------------------------------- scroll text

struct st_scrollPlan {
    std::vector<std::string> rounds; // the text, as often as it comes; the last may break off
    float tracking;                  // in ems
    float pause;                     // between rounds
};

constexpr float SCROLL_SIZE = 0.90F;
constexpr float SCROLL_LENGTH = 329.0F; // the show pulls this much past the picture

st_scrollPlan planScroll(const std::string &text);

// How many letters at the end of the text are more than the show has time for, or a frame room.
std::size_t scrollTooMany(const std::string &text);
st_textStyle scrollStyle();
