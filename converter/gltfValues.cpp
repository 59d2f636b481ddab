// Every offset is compared with what is there by subtraction, so that no sum can wrap around.
#include "converter/gltfValues.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

std::string spend(std::size_t count, std::size_t *budget, std::size_t each) {
    if (count > *budget / each)
        return "it holds more than its size allows";
    *budget -= count * each;
    return "";
}

const unsigned char *viewBytes(const tinygltf::Model &model, int view, std::size_t *size,
                               std::string *problem) {
    if (view < 0 || static_cast<std::size_t>(view) >= model.bufferViews.size()) {
        *problem = "a buffer view is missing";
        return nullptr;
    }
    const tinygltf::BufferView &found = model.bufferViews[static_cast<std::size_t>(view)];
    if (found.buffer < 0 || static_cast<std::size_t>(found.buffer) >= model.buffers.size()) {
        *problem = "a buffer is missing";
        return nullptr;
    }
    const auto &data = model.buffers[static_cast<std::size_t>(found.buffer)].data;
    if (found.byteOffset > data.size() || found.byteLength > data.size() - found.byteOffset) {
        *problem = "a buffer view reaches beyond its buffer";
        return nullptr;
    }
    *size = found.byteLength;
    return data.data() + found.byteOffset;
}

// Elements in a row of bytes, one stride after another.
struct st_elements {
    const unsigned char *bytes;
    std::size_t stride;
};

// count elements of elementSize from offset on in a view; bytes is null if they are not there.
static st_elements elementsOf(const tinygltf::Model &model, int view, std::size_t offset,
                              std::size_t count, std::size_t elementSize, std::string *problem) {
    std::size_t size = 0;
    const unsigned char *bytes = viewBytes(model, view, &size, problem);
    if (bytes == nullptr)
        return {};
    const std::size_t given = model.bufferViews[static_cast<std::size_t>(view)].byteStride;
    const std::size_t stride = given == 0 ? elementSize : given;
    if (stride < elementSize || offset > size ||
        (count > 0 &&
         (elementSize > size - offset || (count - 1) > (size - offset - elementSize) / stride))) {
        *problem = "an accessor reaches beyond its buffer view";
        return {};
    }
    return {bytes + offset, stride};
}

template <typename T> static T numberAt(const unsigned char *bytes) {
    T number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

template <typename T> static float asFloat(T number, bool isNormalized) {
    const float value = static_cast<float>(number);
    if constexpr (std::numeric_limits<T>::is_integer) {
        if (isNormalized)
            return std::fmax(value / static_cast<float>(std::numeric_limits<T>::max()), -1.0F);
    }
    return std::isfinite(value) ? value : 0;
}

template <typename T>
static void copyRow(const unsigned char *bytes, bool isNormalized, std::size_t width, float *row) {
    for (std::size_t i = 0; i < width; i++)
        row[i] = asFloat(numberAt<T>(bytes + i * sizeof(T)), isNormalized);
}

static rowCopier copierOf(int componentType) {
    switch (componentType) {
    case TINYGLTF_COMPONENT_TYPE_BYTE: return copyRow<std::int8_t>;
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE: return copyRow<std::uint8_t>;
    case TINYGLTF_COMPONENT_TYPE_SHORT: return copyRow<std::int16_t>;
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT: return copyRow<std::uint16_t>;
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT: return copyRow<std::uint32_t>;
    case TINYGLTF_COMPONENT_TYPE_FLOAT: return copyRow<float>;
    default: return nullptr;
    }
}

static unsigned indexAt(const unsigned char *bytes, int componentType) {
    if (componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE)
        return *bytes;
    if (componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT)
        return numberAt<std::uint16_t>(bytes);
    return numberAt<std::uint32_t>(bytes);
}

static bool isIndexType(int componentType) {
    return componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE ||
           componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT ||
           componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT;
}

static std::size_t sizeOf(int componentType) {
    return static_cast<std::size_t>(
        tinygltf::GetComponentSizeInBytes(static_cast<unsigned>(componentType)));
}

static const tinygltf::Accessor *accessorAt(const tinygltf::Model &model, int index,
                                            std::string *problem) {
    if (index < 0 || static_cast<std::size_t>(index) >= model.accessors.size()) {
        *problem = "an accessor is missing";
        return nullptr;
    }
    return &model.accessors[static_cast<std::size_t>(index)];
}

// Calls take(row, bytes) for each value that a sparse accessor replaces.
template <typename Take>
static std::string forSparse(const tinygltf::Model &model, const tinygltf::Accessor &accessor,
                             std::size_t elementSize, Take take) {
    const auto &sparse = accessor.sparse;
    if (!sparse.isSparse || sparse.count == 0)
        return "";
    if (sparse.count < 0 || sparse.indices.byteOffset < 0 || sparse.values.byteOffset < 0 ||
        !isIndexType(sparse.indices.componentType))
        return "a sparse accessor makes no sense";
    std::string problem;
    const auto count = static_cast<std::size_t>(sparse.count);
    const st_elements places = elementsOf(model, sparse.indices.bufferView,
                                          static_cast<std::size_t>(sparse.indices.byteOffset),
                                          count, sizeOf(sparse.indices.componentType), &problem);
    const st_elements values = elementsOf(model, sparse.values.bufferView,
                                          static_cast<std::size_t>(sparse.values.byteOffset), count,
                                          elementSize, &problem);
    if (places.bytes == nullptr || values.bytes == nullptr)
        return problem;
    for (std::size_t i = 0; i < count; i++) {
        const std::size_t row =
            indexAt(places.bytes + i * places.stride, sparse.indices.componentType);
        if (row >= accessor.count)
            return "a sparse accessor replaces what is not there";
        take(row, values.bytes + i * values.stride);
    }
    return "";
}

void rowAt(const st_rows &rows, std::size_t i, float *row) {
    if (rows.own.empty())
        rows.copy(rows.bytes + i * rows.stride, rows.isNormalized, rows.width, row);
    else
        std::memcpy(row, &rows.own[i * rows.width], rows.width * sizeof *row);
}

std::string makeOwn(st_rows *rows, std::size_t *budget) {
    if (!rows->own.empty())
        return "";
    constexpr std::size_t USUAL_WIDTH = 4;
    const std::size_t share = std::max<std::size_t>(rows->width / USUAL_WIDTH, 1);
    std::string problem = spend(rows->count, budget, share);
    if (!problem.empty())
        return problem;
    std::vector<float> own(rows->count * rows->width);
    for (std::size_t i = 0; i < rows->count && rows->bytes != nullptr; i++)
        rowAt(*rows, i, &own[i * rows->width]);
    rows->own.swap(own);
    return "";
}

// Rows that are not in the file as they are: zeros, and what a sparse accessor replaces.
static std::string replaceSparse(const tinygltf::Model &model, const tinygltf::Accessor &accessor,
                                 std::size_t elementSize, std::size_t *budget, st_rows *rows) {
    std::string problem = makeOwn(rows, budget);
    if (!problem.empty())
        return problem;
    return forSparse(
        model, accessor, elementSize, [&](std::size_t row, const unsigned char *bytes) {
            rows->copy(bytes, rows->isNormalized, rows->width, &rows->own[row * rows->width]);
        });
}

std::string findRows(const tinygltf::Model &model, int index, std::size_t width,
                     std::size_t *budget, st_rows *rows) {
    std::string problem;
    const tinygltf::Accessor *accessor = accessorAt(model, index, &problem);
    if (accessor == nullptr)
        return problem;
    *rows = {accessor->count,
             width,
             nullptr,
             0,
             accessor->normalized,
             copierOf(accessor->componentType)};
    const int components = tinygltf::GetNumComponentsInType(static_cast<unsigned>(accessor->type));
    if (rows->copy == nullptr || components < static_cast<int>(width))
        return "an accessor is of the wrong kind";
    const std::size_t elementSize =
        sizeOf(accessor->componentType) * static_cast<std::size_t>(components);
    if (accessor->bufferView >= 0) {
        const st_elements elements = elementsOf(model, accessor->bufferView, accessor->byteOffset,
                                                accessor->count, elementSize, &problem);
        if (elements.bytes == nullptr)
            return problem;
        rows->bytes = elements.bytes;
        rows->stride = elements.stride;
    }
    if (rows->bytes == nullptr || accessor->sparse.isSparse)
        return replaceSparse(model, *accessor, elementSize, budget, rows);
    return "";
}

std::string readIndices(const tinygltf::Model &model, int index, std::size_t *budget,
                        std::vector<unsigned> *indices) {
    std::string problem;
    const tinygltf::Accessor *accessor = accessorAt(model, index, &problem);
    if (accessor != nullptr)
        problem = spend(accessor->count, budget);
    if (!problem.empty())
        return problem;
    const int type = accessor->componentType;
    if (!isIndexType(type) || accessor->type != TINYGLTF_TYPE_SCALAR)
        return "indices are of the wrong kind";
    st_elements elements = {};
    if (accessor->bufferView >= 0) {
        elements = elementsOf(model, accessor->bufferView, accessor->byteOffset, accessor->count,
                              sizeOf(type), &problem);
        if (elements.bytes == nullptr)
            return problem;
    }
    indices->assign(accessor->count, 0);
    for (std::size_t i = 0; i < accessor->count && elements.bytes != nullptr; i++)
        (*indices)[i] = indexAt(elements.bytes + i * elements.stride, type);
    return forSparse(model, *accessor, sizeOf(type),
                     [&](std::size_t row, const unsigned char *bytes) {
                         (*indices)[row] = indexAt(bytes, type);
                     });
}
