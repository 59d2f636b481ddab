// A glTF file as tinygltf's records, its buffers read, its pictures found but not decoded.
//
//   st_gltfFile file;
//   const std::string problem = openGltf("tree.glb", &file);
//
// Indices and sizes in the records are as the file says: whoever uses one compares it first.
#pragma once

// Pictures are decoded and files are opened by this room's own hands.
#define TINYGLTF_NO_STB_IMAGE
#define TINYGLTF_NO_STB_IMAGE_WRITE
#define TINYGLTF_NO_EXTERNAL_IMAGE
#define TINYGLTF_NO_FS

#include <tiny_gltf.h>

#include <cstddef>
#include <string>
#include <vector>

struct st_gltfImage {
    std::string name = {};
    std::string path = {};           // relative to the file's folder; "" if it is not a file
    std::vector<unsigned char> data; // what a data URI held
    int bufferView = -1;             // any number; -1: none
};

struct st_gltfFile {
    std::string path;
    std::size_t size = 0; // bytes, with the buffers
    tinygltf::Model model;
    std::vector<st_gltfImage> images;
    bool hasAnimations = false;
    bool hasCameras = false;
    std::string complaint; // of tinygltf, which went on in spite of it
};

// "" or the problem in one line. Extensions that are required are among those known here.
std::string openGltf(const std::string &path, st_gltfFile *file);
