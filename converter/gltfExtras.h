// What glTF has no word for, as members of a material's extras.
#pragma once

// The material's colour where that is brighter than white.
constexpr const char *GLTF_COLOR = "testRenderColor";
