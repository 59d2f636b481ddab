// Texture objects: OpenGL's names, each with its texture of ES. A 1-D texture is a 2-D one of
// height 1.
#pragma once

// Binds for drawing the texture that applies; false if none does.
bool bindTextureToDraw();

void forgetTextures();
