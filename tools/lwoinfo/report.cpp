// One section a kind of record. Sections of which there is nothing are left out.
#include "tools/lwoinfo/report.h"

#include "checker/facts.h"
#include "checker/plainText.h"
#include "renderer/textureFiles.h"

#include <algorithm>
#include <cmath>

using Rows = std::vector<std::vector<std::string>>;

constexpr std::size_t KEYS_SHOWN = 4; // of an envelope

static std::string numbersText(const std::vector<double> &numbers) {
    std::string text;
    for (const double number : numbers)
        text += (text.empty() ? "" : " ") + shortNumber(number);
    return text;
}

static std::string envelopeText(int envelope) {
    return envelope == 0 ? "" : " (envelope " + std::to_string(envelope) + ")";
}

static std::string valueText(const st_attribute &attribute) {
    if (attribute.isName)
        return quoted(attribute.word.c_str());
    return attribute.word.empty() ? numbersText(attribute.numbers) + attribute.unit
                                  : printable(attribute.word);
}

static std::string attributeText(const st_attribute &attribute) {
    return spacedWords(attribute.name) + " " + valueText(attribute) +
           envelopeText(attribute.envelope);
}

static std::string attributesText(const std::vector<st_attribute> &attributes) {
    std::string text;
    for (const st_attribute &attribute : attributes)
        text += (text.empty() ? "" : ", ") + attributeText(attribute);
    return text;
}

// --------------------------------------------------------------------------- layers

static std::string rangeText(const st_box &box, int axis) {
    return box.empty ? "" : shortNumber(box.low[axis]) + " .. " + shortNumber(box.high[axis]);
}

static std::string pivotText(const float pivot[3]) {
    const bool isOrigin = pivot[0] == 0.0F && pivot[1] == 0.0F && pivot[2] == 0.0F;
    return isOrigin ? "" : numbersText({pivot[0], pivot[1], pivot[2]});
}

static std::string flagsText(int flags) {
    if (flags == 0)
        return "";
    return flags == LAYER_HIDDEN ? "hidden" : std::to_string(flags);
}

static st_section layersSection(const st_lwObject *object) {
    Rows rows = {
        {">layer", "name", ">points", ">polygons", "x", "y", "z", "pivot", ">parent", "flags"}};
    forEach(object->layers, [&](const st_lwLayer &layer) {
        const st_box box = layerBox(&layer);
        rows.push_back(
            {std::to_string(layer.index), layer.name == nullptr ? "" : quoted(layer.name),
             std::to_string(layer.pointList.count), std::to_string(layer.polygonList.count),
             rangeText(box, 0), rangeText(box, 1), rangeText(box, 2), pivotText(layer.pivot),
             layer.parent == 0 ? "" : std::to_string(layer.parent), flagsText(layer.flags)});
    });
    if (object->layerCount > 1) {
        const st_box box = objectBox(object);
        rows.push_back({"all", "", "", "", rangeText(box, 0), rangeText(box, 1), rangeText(box, 2),
                        "", "", ""});
    }
    return {"Layers", rows};
}

// ------------------------------------------------------------------------- polygons

static std::string cornersText(int corners) {
    if (corners == 3)
        return "triangles";
    return corners == 4 ? "quads" : counted(corners, "corner");
}

static st_section polygonsSection(const st_lwObject *object) {
    Rows rows = {{"type", ">polygons", "corners"}};
    unsigned int type = 0;
    for (const auto &[kind, count] : countPolygons(object)) {
        const bool isNew = rows.size() == 1 || kind.first != type;
        type = kind.first;
        rows.push_back(
            {isNew ? idText(type) : "", std::to_string(count), cornersText(kind.second)});
    }
    return {"Polygons", rows};
}

// ------------------------------------------------------------------------- surfaces

static std::string clipText(const st_lwObject *object, int index) {
    if (index == 0)
        return "no image";
    const st_lwClip *clip = lwFindClip(object->clips, index);
    return "clip " + std::to_string(index) + " " +
           (clip == nullptr ? "(missing)" : quoted(clipSourceName(clip)));
}

static std::string textureText(const st_lwObject *object, const st_lwTexture &texture) {
    std::string text = textureKind(&texture);
    if (texture.type == lwID("IMAP"))
        text += ", " + clipText(object, texture.param.imageMap.clipIndex);
    const std::string attributes = attributesText(textureAttributes(&texture));
    return text + (attributes.empty() ? "" : ", " + attributes);
}

static st_section surfacesSection(const st_lwObject *object) {
    Rows rows = {{"name", ">polygons", "color", "attributes"}};
    std::map<const st_lwSurface *, int> counts = countBySurface(object);
    forEach(object->surfaces, [&](const st_lwSurface &surface) {
        const float *rgb = surface.color.rgb;
        rows.push_back(
            {quoted(surface.name), std::to_string(counts[&surface]),
             numbersText({rgb[0], rgb[1], rgb[2]}) + envelopeText(surface.color.envelope),
             attributesText(surfaceAttributes(&surface))});
    });
    return {"Surfaces", rows};
}

static st_section texturesSection(const st_lwObject *object) {
    Rows rows = {{"surface", "channel", "texture"}};
    forEach(object->surfaces, [&](const st_lwSurface &surface) {
        for (const st_channelTextures &channel : channelTextures(&surface))
            forEach(channel.textures, [&](const st_lwTexture &texture) {
                rows.push_back({quoted(surface.name), spacedWords(channel.channel),
                                textureText(object, texture)});
            });
    });
    return {"Textures", rows};
}

// -------------------------------------------------- clips, vertex maps, envelopes

static st_section clipsSection(const st_lwObject *object) {
    Rows rows = {{">clip", "source", "name", "attributes"}};
    forEach(object->clips, [&](const st_lwClip &clip) {
        rows.push_back({std::to_string(clip.index), clipTypeName(clip.type),
                        quoted(clipSourceName(&clip)), attributesText(clipAttributes(&clip))});
    });
    return {"Clips", rows};
}

static st_section vertexMapsSection(const st_lwObject *object) {
    Rows rows = {{">layer", "type", "name", ">values", "for each of"}};
    forEach(object->layers, [&](const st_lwLayer &layer) {
        forEach(layer.vmaps, [&](const st_lwVMap &vmap) {
            rows.push_back({std::to_string(layer.index), idText(vmap.type), quoted(vmap.name),
                            std::to_string(vmap.dimension),
                            counted(vmap.count, vmap.perPolygon != 0 ? "corner" : "point")});
        });
    });
    return {"Vertex maps", rows};
}

static std::string keysText(const st_lwEnvelope &envelope) {
    std::string text;
    std::size_t shown = 0;
    forEach(envelope.keys, [&](const st_lwKey &key) {
        if (shown++ < KEYS_SHOWN)
            text += (text.empty() ? "" : ", ") + shortNumber(key.value) + " at " +
                    shortNumber(key.time) + " s";
    });
    return shown > KEYS_SHOWN ? text + ", ..." : text;
}

static st_section envelopesSection(const st_lwObject *object) {
    Rows rows = {{">envelope", "name", ">keys", "values", "before", "after", "filters"}};
    forEach(object->envelopes, [&](const st_lwEnvelope &envelope) {
        rows.push_back({std::to_string(envelope.index),
                        envelope.name == nullptr ? "" : quoted(envelope.name),
                        std::to_string(envelope.keyCount), keysText(envelope),
                        behaviorName(envelope.behavior[0]), behaviorName(envelope.behavior[1]),
                        envelope.cfilterCount == 0 ? "" : std::to_string(envelope.cfilterCount)});
    });
    return {"Envelopes", rows};
}

// ---------------------------------------------------------------------- the report

std::string objectHeadline(const st_modelFile &model) {
    const st_lwObject *object = model.object.get();
    long long points = 0;
    long long polygons = 0;
    forEach(object->layers, [&](const st_lwLayer &layer) {
        points += layer.pointList.count;
        polygons += layer.polygonList.count;
    });
    return model.format + ", " + counted(object->layerCount, "layer") + ", " +
           counted(points, "point") + ", " + counted(polygons, "polygon") + ", " +
           counted(object->surfaceCount, "surface");
}

std::vector<st_section> objectSections(const st_modelFile &model) {
    const st_lwObject *object = model.object.get();
    std::vector<st_section> sections = {layersSection(object),   polygonsSection(object),
                                        surfacesSection(object), texturesSection(object),
                                        clipsSection(object),    vertexMapsSection(object),
                                        envelopesSection(object)};
    sections.erase(
        std::remove_if(sections.begin(), sections.end(),
                       [](const st_section &section) { return section.rows.size() < 2; }),
        sections.end());
    return sections;
}

std::string objectReport(const st_modelFile &model) {
    std::string text = printable(model.path) + ": " + objectHeadline(model) + "\n";
    for (const st_section &section : objectSections(model))
        text += "\n" + section.title + "\n" + columns(section.rows);
    return text;
}
