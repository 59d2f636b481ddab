// Programs of ES that stand for the fixed functions: one for each combination of what can be on,
// compiled when it is first drawn with.
#pragma once

enum programPart {
    PART_LIT = 1,
    PART_NORMALIZED = 2, // normals are brought to length 1
    PART_TEXTURED = 4,
    PART_PROJECTED = 8, // positions for the screen come with the vertices
    PART_FLAT = 16,
    PROGRAM_COUNT = 32
};

// Makes the program of these parts current and sends it what has changed since it was last used.
// False, with one line on standard error the first time, if ES does not take it.
bool useProgram(unsigned parts);

void forgetPrograms();
