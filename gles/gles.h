// OpenGL 1.2's fixed functions on OpenGL ES 3: link this room in place of the OpenGL library, and
// programs that call glBegin, glLightfv and their like draw through whatever gives ES 3.
//
//   st_es3 es3;
//   if (fillEs3(&es3, eglGetProcAddress)) glesStart(&es3); // with an ES 3 context current
//   ...                                                    // any of the calls below
//   glFlush();                                             // before buffers are swapped
//
// One context, used from one thread. Before glesStart only calls that keep state are allowed.
//
// Covered, with OpenGL 1.2's meaning, defaults and errors:
//
//   matrices   glMatrixMode (GL_MODELVIEW, GL_PROJECTION; 32 deep each), glLoadIdentity,
//              glLoadMatrixf, glMultMatrixf, glMultMatrixd, glTranslatef, glRotatef, glScalef,
//              glPushMatrix, glPopMatrix; gluPerspective
//   lighting   glLightf, glLightfv (eight lights, everything), glMaterialf, glMaterialfv (outside
//              glBegin; GL_FRONT, GL_FRONT_AND_BACK), glColorMaterial (the same faces),
//              glLightModelfv, glLightModeli (one-sided), glShadeModel, GL_NORMALIZE
//   arrays     glVertexPointer (2 to 4 floats), glNormalPointer, glColorPointer (3 or 4),
//              glTexCoordPointer (1 or 2), all GL_FLOAT; glInterleavedArrays of floats with at most
//              two texture coordinates and three of position; glEnableClientState,
//              glDisableClientState, glDrawArrays
//   one by one glBegin, glEnd, glVertex3f, glVertex3fv, glColor3f, glColor3fv, glColor4f,
//              glColor4fv, glNormal3f, glNormal3fv, glTexCoord1f, glTexCoord2f
//   primitives GL_LINES, GL_TRIANGLES, GL_QUADS; how quads are split stands in quads.h
//   textures   glGenTextures, glDeleteTextures, glBindTexture, glTexImage1D, glTexImage2D (level 0
//              without border, sides powers of two; kept as GL_RGB or GL_RGBA of 8 bits; from
//              GL_RGB, GL_RGBA, GL_BGR, GL_BGRA in bytes or floats), glTexParameteri (filters,
//              GL_REPEAT, GL_CLAMP_TO_EDGE), glTexEnvi (GL_MODULATE)
//   polygons   glCullFace, glPolygonMode (GL_FILL, GL_LINE; lines are drawn after the filled faces
//              of the same draw), glLineWidth
//   pixels     glDepthFunc, glBlendFunc, glClear (colour, depth), glClearColor, glClearDepth,
//              glViewport, glReadPixels (GL_RGB, GL_RGBA in bytes), glPixelStorei (alignments)
//   switches   glEnable, glDisable, glIsEnabled: GL_LIGHTING, GL_LIGHT0 to 7, GL_COLOR_MATERIAL,
//              GL_NORMALIZE, GL_TEXTURE_1D, GL_TEXTURE_2D, GL_CULL_FACE, GL_DEPTH_TEST, GL_BLEND,
//              GL_DITHER, GL_LINE_SMOOTH (only as long as no line is drawn with it)
//   others     glGetError, glGetFloatv, glGetIntegerv (matrices, stack depths, current values,
//              viewport, line width, limits), glHint, glPixelZoom (1, 1), glFlush, glFinish
//
// Every other function of OpenGL 1.2 but its optional imaging subset exists, and does nothing but
// set GL_INVALID_OPERATION; so does a covered function with a value that OpenGL 1.2 knows and this
// room does not. A texture that is not complete counts as disabled; of two enabled and complete
// ones the 2-D one is drawn.
//
// An array's bytes go to a buffer of ES the first time that they are drawn. A copy is kept (at most
// 256 MB of them; those drawn longest ago go), and each draw compares the bytes with it, eight at a
// time: equal ones are drawn from the buffer as it stands, others are uploaded. So an array may be
// changed, freed, and its memory used again, without a word. The comparison cannot be wrong, as a
// hash could, and costs less: 0.15 ms a frame of the show, where a 64-bit hash took 0.23 ms.
#pragma once

#include "gles/es3.h"

// Takes the functions of the current context, which must be as it was created, and puts the state
// at OpenGL's defaults. The table is copied.
void glesStart(const st_es3 *es3);

// For a context that was lost and came back: forgets every object of ES and makes anew what drawing
// needs. The state stays, texture names and images do not: who made textures must make them again.
void glesRestart();

// While off, primitives and glClear are checked for errors and nothing is drawn or cleared, as a
// host wants it that seeks through a show. On at the start.
void glesDraw(bool on);
