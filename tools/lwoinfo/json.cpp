// The records of an object member by member. Strings are made UTF-8; infinite numbers and those
// that are none become null when the document is written.
#include "tools/lwoinfo/json.h"

#include "checker/facts.h"
#include "checker/plainText.h"
#include "renderer/textureFiles.h"

// An empty string is as good as none.
static Json text(const char *bytes) {
    return bytes == nullptr ? Json() : Json(utf8(bytes));
}

static Json vector3(const float v[3]) {
    return Json::array({v[0], v[1], v[2]});
}

static Json boxJson(const st_box &box) {
    return box.empty ? Json() : Json{{"low", vector3(box.low)}, {"high", vector3(box.high)}};
}

// Numbers and words by name; an envelope stands beside what it drives.
static void addAttributes(Json *target, const std::vector<st_attribute> &attributes) {
    for (const st_attribute &attribute : attributes) {
        Json &value = (*target)[attribute.name];
        if (attribute.numbers.empty())
            value = attribute.word;
        else if (attribute.numbers.size() == 1)
            value = attribute.numbers[0];
        else
            value = attribute.numbers;
        if (attribute.envelope != 0)
            (*target)[attribute.name + "Envelope"] = attribute.envelope;
    }
}

template <typename Record, typename Make> static Json listJson(const Record *list, Make make) {
    Json array = Json::array();
    forEach(list, [&](const Record &record) { array.push_back(make(record)); });
    return array;
}

// --------------------------------------------------------------------------- layers

static Json vertexMapJson(const st_lwVMap &vmap) {
    return {{"type", idText(vmap.type)},
            {"name", text(vmap.name)},
            {"dimension", vmap.dimension},
            {"count", vmap.count},
            {"perPolygon", vmap.perPolygon != 0}};
}

static Json layerJson(const st_lwLayer &layer) {
    return {{"number", layer.index},
            {"name", text(layer.name)},
            {"parent", layer.parent},
            {"flags", layer.flags},
            {"pivot", vector3(layer.pivot)},
            {"points", layer.pointList.count},
            {"polygons", layer.polygonList.count},
            {"box", boxJson(layerBox(&layer))},
            {"vertexMaps", listJson(layer.vmaps, vertexMapJson)}};
}

static Json polygonsJson(const st_lwObject *object) {
    Json list = Json::array();
    for (const auto &[kind, count] : countPolygons(object))
        list.push_back({{"type", idText(kind.first)}, {"corners", kind.second}, {"count", count}});
    return list;
}

// ------------------------------------------------------------------------- surfaces

static Json textureJson(const char *channel, const st_lwTexture &texture) {
    Json json = {{"channel", channel},
                 {"type", textureTypeName(texture.type)},
                 {"ordinal", text(texture.ordinal)}};
    if (texture.type == lwID("IMAP")) {
        json["projection"] = projectionName(texture.param.imageMap.projection);
        json["clip"] = texture.param.imageMap.clipIndex;
    }
    addAttributes(&json, textureAttributes(&texture));
    return json;
}

static Json surfaceJson(const st_lwSurface &surface, int polygonCount) {
    Json json = {{"name", text(surface.name)},
                 {"polygons", polygonCount},
                 {"color", vector3(surface.color.rgb)}};
    if (surface.color.envelope != 0)
        json["colorEnvelope"] = surface.color.envelope;
    addAttributes(&json, surfaceAttributes(&surface));
    json["textures"] = Json::array();
    for (const st_channelTextures &channel : channelTextures(&surface))
        forEach(channel.textures, [&](const st_lwTexture &texture) {
            json["textures"].push_back(textureJson(channel.channel, texture));
        });
    return json;
}

// ------------------------------------------------------------------ clips, envelopes

static Json clipJson(const st_lwClip &clip) {
    Json json = {{"index", clip.index},
                 {"source", clipTypeName(clip.type)},
                 {"name", text(clipSourceName(&clip))}};
    addAttributes(&json, clipAttributes(&clip));
    return json;
}

static Json keyJson(const st_lwKey &key) {
    return {{"time", key.time},
            {"value", key.value},
            {"shape", key.shape == 0 ? Json() : Json(idText(key.shape))}};
}

static Json envelopeJson(const st_lwEnvelope &envelope) {
    return {{"index", envelope.index},
            {"name", text(envelope.name)},
            {"before", behaviorName(envelope.behavior[0])},
            {"after", behaviorName(envelope.behavior[1])},
            {"keys", listJson(envelope.keys, keyJson)}};
}

// ------------------------------------------------------------------------- documents

static Json problemJson(const st_modelFile &model) {
    Json json = {{"problem", model.problem}};
    if (!model.limit.empty())
        json["rule"] = model.limit;
    if (!model.failedChunk.empty())
        json["chunk"] = model.failedChunk;
    if (model.failedPosition >= 0)
        json["position"] = model.failedPosition;
    return json;
}

Json objectJson(const st_modelFile &model) {
    Json json = {{"file", utf8(model.path.c_str())}};
    if (model.object == nullptr) {
        json["unreadable"] = problemJson(model);
        return json;
    }
    const st_lwObject *object = model.object.get();
    json["format"] = model.format;
    json["box"] = boxJson(objectBox(object));
    json["layers"] = listJson(object->layers, layerJson);
    json["polygons"] = polygonsJson(object);
    std::map<const st_lwSurface *, int> counts = countBySurface(object);
    json["surfaces"] = listJson(object->surfaces, [&](const st_lwSurface &surface) {
        return surfaceJson(surface, counts[&surface]);
    });
    json["clips"] = listJson(object->clips, clipJson);
    json["envelopes"] = listJson(object->envelopes, envelopeJson);
    return json;
}

Json findingsJson(const std::vector<st_finding> &findings) {
    Json list = Json::array();
    for (const st_finding &finding : findings)
        list.push_back({{"rule", finding.rule},
                        {"note", finding.isNote},
                        {"what", finding.what},
                        {"consequence", finding.consequence},
                        {"remedy", finding.remedy}});
    return list;
}
