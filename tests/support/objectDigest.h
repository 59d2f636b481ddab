// One number that stands for all that the reader puts into an object: every field of every
// record, floats by their bits, pointers by the place in its list of what they point at. Two
// objects with the same digest are the same object.
//   EXPECT_EQ(objectDigest(*object), 0x123456789ABCDEF0U);
#pragma once

#include "reader/lwo2.h"

#include <cstdint>
#include <cstring>
#include <map>

struct Digest {
    std::uint64_t value = 14695981039346656037U;
    std::map<const void *, int> places; // of surfaces and maps, from 1

    void bits(std::uint64_t word) {
        value = (value ^ word) * 1099511628211U;
        value ^= value >> 29;
    }
    void add(int number) { bits(static_cast<std::uint32_t>(number)); }
    void add(unsigned number) { bits(number); }
    void add(float number) {
        std::uint32_t pattern = 0;
        std::memcpy(&pattern, &number, sizeof pattern);
        bits(pattern);
    }
    void add(const char *text) {
        bits(text == nullptr ? 1 : 2);
        for (; text != nullptr && *text != '\0'; text++)
            bits(static_cast<unsigned char>(*text));
    }
    template <typename Number> void add(const Number *numbers, int count) {
        for (int i = 0; i < count; i++)
            add(numbers[i]);
    }
    void add(const st_lwEnvValue &item) { all(item.value, item.envelope); }
    void add(const st_lwEnvVector &item) {
        add(item.value, 3);
        add(item.envelope);
    }
    template <typename... Fields> void all(const Fields &...fields) { (add(fields), ...); }

    // Each record of a list, by an add of its own.
    template <typename Record> void list(const Record *records) {
        int place = 0;
        for (; records != nullptr; records = records->next) {
            places[records] = ++place;
            add(*records);
        }
        add(place);
    }
    void place(const void *record) {
        const auto found = places.find(record);
        add(found == places.end() ? 0 : found->second);
    }

    // The raw blocks behind data fields have no length of their own: whether there is one.
    void add(const st_lwPlugin &plugin) {
        all(plugin.ordinal, plugin.name, plugin.flags, plugin.data != nullptr);
    }
    void add(bool is) { bits(is ? 1 : 0); }

    void add(const st_lwTexture &texture) {
        all(texture.ordinal, texture.type, texture.channel, texture.opacity,
            int(texture.opacityType), int(texture.enabled), int(texture.negative),
            int(texture.axis));
        const st_lwTMap &tmap = texture.tmap;
        all(tmap.size, tmap.center, tmap.rotate, tmap.falloff, tmap.falloffType, tmap.refObject,
            tmap.coordSystem);
        const auto &param = texture.param;
        if (texture.type == lwID("IMAP"))
            all(param.imageMap.clipIndex, param.imageMap.projection, param.imageMap.vmapName,
                param.imageMap.axis, param.imageMap.wrapWidthType, param.imageMap.wrapHeightType,
                param.imageMap.wrapWidth, param.imageMap.wrapHeight, param.imageMap.aaStrength,
                param.imageMap.aaFlags, param.imageMap.pixelBlend, param.imageMap.sticky,
                param.imageMap.amplitude);
        if (texture.type == lwID("PROC")) {
            add(param.procedural.value, 3);
            all(param.procedural.axis, param.procedural.name, param.procedural.data != nullptr);
        }
        if (texture.type == lwID("GRAD"))
            all(param.gradient.paramName, param.gradient.itemName, param.gradient.start,
                param.gradient.end, param.gradient.repeat, param.gradient.keys != nullptr,
                param.gradient.interpolations != nullptr);
    }
    template <typename Channel> void channel(const Channel &item) {
        all(item.envelope);
        list(item.textures);
    }
    void add(const st_lwValueChannel &item) {
        add(item.value);
        channel(item);
    }
    void add(const st_lwMirrorChannel &item) {
        all(item.value, item.options, item.clipIndex, item.seamAngle);
        channel(item);
    }
    void add(const st_lwSurface &surface) {
        all(surface.name, surface.srcName);
        add(surface.color.rgb, 3);
        channel(surface.color);
        all(surface.luminosity, surface.diffuse, surface.specularity, surface.glossiness,
            surface.reflection, surface.transparency, surface.eta, surface.translucency,
            surface.bump, surface.smoothing, surface.sideFlags, surface.alpha, surface.alphaMode,
            surface.colorHighlight, surface.colorFilter, surface.additiveTransparency,
            surface.diffuseSharpness, surface.glow, int(surface.line.enabled),
            int(surface.line.flags), surface.line.size, surface.shaderCount);
        list(surface.shaders);
    }
    void add(const st_lwKey &key) {
        all(key.value, key.time, key.shape, key.tension, key.continuity, key.bias);
        add(key.param, 4);
    }
    void add(const st_lwEnvelope &envelope) {
        all(envelope.index, envelope.type, envelope.name, envelope.keyCount, envelope.behavior[0],
            envelope.behavior[1], envelope.cfilterCount);
        list(envelope.keys);
        list(envelope.cfilters);
    }
    void addSource(const st_lwClip &clip) {
        const auto &source = clip.source;
        if (clip.type == lwID("STIL"))
            add(source.still.name);
        if (clip.type == lwID("ISEQ"))
            all(source.sequence.prefix, source.sequence.suffix, source.sequence.digits,
                source.sequence.flags, source.sequence.offset, source.sequence.start,
                source.sequence.end);
        if (clip.type == lwID("ANIM"))
            all(source.anim.name, source.anim.server, source.anim.data != nullptr);
        if (clip.type == lwID("XREF"))
            all(source.xref.string, source.xref.index);
        if (clip.type == lwID("STCC"))
            all(source.cycle.name, source.cycle.alpha, source.cycle.value);
    }
    void add(const st_lwClip &clip) {
        all(clip.index, clip.type, clip.startTime, clip.duration, clip.frameRate, clip.contrast,
            clip.brightness, clip.saturation, clip.hue, clip.gamma, clip.negative,
            clip.imageFilterCount, clip.pixelFilterCount);
        addSource(clip);
        list(clip.imageFilters);
        list(clip.pixelFilters);
    }
    void add(const st_lwVMap &vmap) {
        all(vmap.name, vmap.type, vmap.dimension, vmap.count, vmap.perPolygon);
        for (int i = 0; i < vmap.count; i++) {
            all(vmap.pointIndices[i], vmap.perPolygon ? vmap.polygonIndices[i] : -1);
            add(vmap.values == nullptr ? nullptr : vmap.values[i],
                vmap.values == nullptr ? 0 : vmap.dimension);
        }
    }
    void refs(const st_lwVMapRef *items, int count) {
        add(count);
        for (int i = 0; i < count; i++) {
            place(items[i].vmap);
            add(items[i].index);
        }
    }
    void add(const st_lwPoint &point) {
        add(point.position, 3);
        add(point.polygonCount);
        add(point.polygons, point.polygonCount);
        refs(point.vmapRefs, point.vmapCount);
    }
    void add(const st_lwPolygonVertex &vertex) {
        add(vertex.index);
        add(vertex.normal, 3);
        refs(vertex.vmapRefs, vertex.vmapCount);
    }
    void add(const st_lwPolygon &polygon) {
        place(polygon.surface);
        all(polygon.part, polygon.smoothGroup, polygon.flags, polygon.type, polygon.vertexCount);
        add(polygon.normal, 3);
        add(polygon.vertices, polygon.vertexCount);
    }
    void add(const st_lwLayer &layer) {
        all(layer.name, layer.index, layer.parent, layer.flags, layer.vmapCount);
        add(layer.pivot, 3);
        add(layer.bbox, 6);
        list(layer.vmaps);
        all(layer.pointList.count, layer.pointList.offset);
        add(layer.pointList.points, layer.pointList.count);
        all(layer.polygonList.count, layer.polygonList.offset, layer.polygonList.vertexCount,
            layer.polygonList.vertexOffset);
        add(layer.polygonList.polygons, layer.polygonList.count);
    }
    void add(const st_lwObject &object) {
        list(object.surfaces);
        list(object.envelopes);
        list(object.clips);
        all(object.tagList.count, object.tagList.offset, object.layerCount, object.envelopeCount,
            object.clipCount, object.surfaceCount);
        add(object.tagList.tags, object.tagList.count);
        list(object.layers);
    }
};

inline std::uint64_t objectDigest(const st_lwObject &object) {
    Digest digest;
    digest.add(object);
    return digest.value;
}
