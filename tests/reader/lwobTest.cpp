#include "tests/reader/readerTest.h"

static Object loadLWOB(const std::string &chunks) {
    return load(form("LWOB", chunks));
}

// The object of one surface with these sub-chunks.
static Object loadSurface(const std::string &subChunks) {
    return loadLWOB(chunk("SURF", s0("name") + subChunks));
}

static std::string polygon(std::initializer_list<unsigned> indices, int surface) {
    std::string bytes = u2(static_cast<unsigned>(indices.size()));
    for (const unsigned index : indices)
        bytes += u2(index);
    return bytes + u2(static_cast<unsigned>(surface) & 0xFFFF);
}

// ------------------------------------------------------------------------ geometry

TEST(Lwob, oneLayerWithTheSurfaceNamesAsTags) {
    const Object object =
        there(loadLWOB(square + chunk("SRFS", s0("red") + s0("blue")) +
                       chunk("POLS", polygon({0, 3, 1}, 2) + polygon({2, 1, 3}, 1)) +
                       chunk("????", "odd") + chunk("SURF", s0("blue") + sub("SMAN", f4(1)))));
    EXPECT_EQ(object->layerCount, 1);
    EXPECT_EQ(object->tagList.count, 2);
    const st_lwPolygonList &list = object->layers->polygonList;
    ASSERT_EQ(list.count, 2);
    EXPECT_EQ(numbers(list.polygons[0].type, list.polygons[0].surface->smoothing,
                      list.polygons[1].vertices[0].index, list.polygons[1].vertices[0].normal[2],
                      object->layers->bbox[3]),
              numbers(lwID("FACE"), 1, 2, 1, 1));
    EXPECT_EQ(list.polygons[0].surface, object->surfaces);
    EXPECT_STREQ(list.polygons[1].surface->name, "red");
}

TEST(Lwob, detailPolygonsAreOrdinaryOnes) {
    const Object object =
        there(loadLWOB(square + chunk("SRFS", s0("a") + s0("b")) +
                       chunk("POLS", polygon({0, 3, 1}, -2) + u2(1) + polygon({2, 1}, 1))));
    const st_lwPolygonList &list = object->layers->polygonList;
    ASSERT_EQ(list.count, 2);
    EXPECT_STREQ(list.polygons[0].surface->name, "b");
    EXPECT_STREQ(list.polygons[1].surface->name, "a");
    EXPECT_EQ(list.polygons[1].vertexCount, 2);
}

TEST(Lwob, allSixteenBitsCountVertices) {
    std::string wide = u2(0x0402);
    for (unsigned i = 0; i < 0x0402; i++)
        wide += u2(i);
    // 0xFF00 would open a wide index in the newer layout.
    const Object object = there(loadLWOB(chunk("PNTS", std::string(12 * 0xFF01, '\0')) +
                                         chunk("POLS", wide + u2(1) + polygon({0xFF00}, 1))));
    EXPECT_EQ(numbers(object->layers->polygonList.polygons[0].vertexCount,
                      object->layers->polygonList.polygons[0].flags,
                      object->layers->polygonList.polygons[1].vertices[0].index),
              numbers(0x0402, 0, 0xFF00));
}

TEST(Lwob, surfaceNumberZeroIsNoTag) {
    const std::string polygons = chunk("POLS", polygon({0, 3, 1}, 0));
    expectFailure(form("LWOB", square + chunk("SRFS", s0("a")) + polygons), lwID("POLS"), -1);
    const Object object = there(loadLWOB(square + polygons));
    EXPECT_EQ(object->layers->polygonList.polygons[0].surface, nullptr);
}

TEST(Lwob, polygonsCutShortFail) {
    const std::string whole = polygon({0, 3, 1}, -1) + u2(1);
    for (std::size_t size = 1; size <= whole.size(); size++) {
        const File file = openBytes(whole.substr(0, size));
        st_lwPolygonList list = {};
        // The count of detail polygons may be missing.
        const bool complete = size >= whole.size() - 2;
        EXPECT_EQ(lwGetPolygons5(file.get(), static_cast<int>(size), &list, 0), complete) << size;
        EXPECT_EQ(list.count, complete);
        lwFreePolygons(&list);
    }
}

TEST(Lwob, failuresAreReportedAsInTheNewerLayout) {
    const std::string whole = form("LWOB", square + chunk("SURF", s0("a") + sub("SMAN", f4(1))));
    expectFailure(cutByOne(whole), lwID("SURF"), static_cast<int>(whole.size()) - 1);
    int position = 0;
    EXPECT_EQ(lwGetObject5(memoryFile(form("LWO2", square)).c_str(), nullptr, &position), nullptr);
    EXPECT_EQ(position, 12);
    EXPECT_EQ(lwGetObject5(testPath("none").c_str(), nullptr, nullptr), nullptr);
}

// ---------------------------------------------------------------------- attributes

TEST(LwobSurface, attributes) {
    const Object object =
        there(loadSurface(sub("COLR", u1(255) + u1(51) + u1(0) + u1(9)) + sub("LUMI", u2(128)) +
                          sub("DIFF", u2(256)) + sub("SPEC", u2(0xFF80)) + sub("REFL", u2(64)) +
                          sub("TRAN", u2(192)) + sub("GLOS", u2(1024)) + sub("RFLT", u2(2)) +
                          sub("RSAN", f4(0.5F)) + sub("RIND", f4(1.5F)) + sub("SMAN", f4(0.25F))));
    const st_lwSurface &surface = *object->surfaces;
    EXPECT_EQ(numbers(surface.color.rgb[0], surface.luminosity.value, surface.diffuse.value,
                      surface.specularity.value, surface.reflection.value,
                      surface.transparency.value, surface.reflection.options,
                      surface.reflection.seamAngle, surface.eta.value, surface.smoothing,
                      surface.bump.value),
              numbers(1, 0.5, 1, -0.5, 0.25, 0.75, 2, 0.5, 1.5, 0.25, 1));
    EXPECT_STREQ(surface.name, "name");
    EXPECT_EQ(surface.srcName, nullptr);
    EXPECT_FLOAT_EQ(surface.color.rgb[1], 0.2F);
    EXPECT_NEAR(surface.glossiness.value, 1.0F / 3, 1e-5F);

    const Object precise =
        there(loadSurface(sub("VLUM", f4(2)) + sub("VDIF", f4(3)) + sub("VSPC", f4(4))));
    EXPECT_EQ(numbers(precise->surfaces->luminosity.value, precise->surfaces->diffuse.value,
                      precise->surfaces->specularity.value),
              numbers(2, 3, 4));
}

TEST(LwobSurface, flags) {
    const Object some = there(loadSurface(sub("FLAG", u2(0x104))));
    EXPECT_EQ(numbers(some->surfaces->smoothing, some->surfaces->sideFlags,
                      some->surfaces->colorHighlight.value),
              numbers(1.56207F, 3, 0));
    const Object others = there(loadSurface(sub("FLAG", u2(0x298))));
    EXPECT_EQ(numbers(others->surfaces->colorHighlight.value, others->surfaces->colorFilter.value,
                      others->surfaces->diffuseSharpness.value,
                      others->surfaces->additiveTransparency.value, others->surfaces->smoothing,
                      others->surfaces->sideFlags),
              numbers(1, 1, 0.5, 1, 0, 1));
}

TEST(LwobSurface, shaders) {
    const Object object =
        there(loadSurface(sub("SDAT", "lost") + sub("SHDR", "toon") + sub("SDAT", "old!") +
                          sub("SDAT", "data") + sub("SHDR", s0("second"))));
    ASSERT_EQ(object->surfaces->shaderCount, 2);
    const st_lwPlugin *shader = object->surfaces->shaders;
    // The file does not terminate it.
    EXPECT_STREQ(shader->name, "toon");
    EXPECT_EQ(std::memcmp(shader->data, "data", 4), 0);
    EXPECT_STREQ(shader->next->name, "second");
    EXPECT_EQ(shader->next->data, nullptr);
}

TEST(LwobSurface, readByItselfAppendsToWhatTheObjectHas) {
    const Object object = loadSurface(sub("CTEX", s0("Wood")) + sub("TVEL", f4(1, 0, 0)) +
                                      sub("RIMG", s0("a.tga")) + sub("TIMG", s0("b.tga")));
    ASSERT_NE(object, nullptr);
    const std::string body =
        s0("more") + sub("TVEL", f4(0, 1, 0)) + sub("TVEL", f4(0, 0, 1)) + sub("TIMG", s0("c.tga"));
    const File file = openBytes(body);
    st_lwSurface *surface = lwGetSurface5(file.get(), static_cast<int>(body.size()), object.get());
    ASSERT_NE(surface, nullptr);
    lwFreeSurface(surface);
    EXPECT_EQ(object->envelopeCount, 9);
    EXPECT_NE(lwFindEnvelope(object->envelopes, 9), nullptr);
    const st_lwClip *last = object->clips->next->next;
    EXPECT_STREQ(last->source.still.name, "c.tga");
    EXPECT_EQ(last->index, 1);
    EXPECT_EQ(last->next, nullptr);
}

// ------------------------------------------------------------------------- textures

TEST(LwobTexture, nameSaysKindAndProjection) {
    const struct {
        std::string name;
        unsigned type;
        int projection;
    } cases[] = {{"Planar Image Map", lwID("IMAP"), LW_PROJECTION_PLANAR},
                 {"Cylindrical Image Map", lwID("IMAP"), LW_PROJECTION_CYLINDRICAL},
                 {"Spherical Image Map", lwID("IMAP"), LW_PROJECTION_SPHERICAL},
                 {"Cubic Image Map", lwID("IMAP"), LW_PROJECTION_CUBIC},
                 {"Front Projection Image Map", lwID("IMAP"), LW_PROJECTION_FRONT},
                 {"Image Map", lwID("IMAP"), LW_PROJECTION_PLANAR},
                 {"Front Planar Image Map", lwID("IMAP"), LW_PROJECTION_PLANAR},
                 {"Fractal Noise", lwID("PROC"), 0}};
    for (const auto &item : cases) {
        const Object object = there(loadSurface(sub("CTEX", item.name)));
        const st_lwTexture *texture = there(object->surfaces->color.textures);
        EXPECT_EQ(numbers(texture->enabled, texture->opacity.value, texture->tmap.size.value[0]),
                  numbers(1, 1, 1));
        EXPECT_EQ(texture->type, item.type) << item.name;
        if (item.type == lwID("PROC")) {
            EXPECT_STREQ(texture->param.procedural.name, "Fractal Noise");
            continue;
        }
        EXPECT_EQ(texture->param.imageMap.projection, item.projection) << item.name;
        EXPECT_EQ(texture->param.imageMap.aaStrength, 1.0F);
        EXPECT_EQ(texture->param.imageMap.amplitude.value, 1.0F);
    }
}

TEST(LwobTexture, channelsKeepTheOrderOfTheFile) {
    const Object object = there(loadSurface(
        sub("CTEX", s0("b")) + sub("CTEX", s0("a")) + sub("DTEX", s0("1")) + sub("STEX", s0("2")) +
        sub("RTEX", s0("3")) + sub("TTEX", s0("4")) + sub("LTEX", s0("5")) + sub("BTEX", s0("6"))));
    const st_lwSurface &surface = *object->surfaces;
    std::string names;
    for (const st_lwTexture *texture :
         {surface.color.textures, surface.color.textures->next, surface.diffuse.textures,
          surface.specularity.textures, surface.reflection.textures, surface.transparency.textures,
          surface.luminosity.textures, surface.bump.textures})
        names += there(texture)->param.procedural.name;
    EXPECT_EQ(names, "ba123456");
}

TEST(LwobTexture, parametersGoToTheLatestTexture) {
    const Object object = there(loadSurface(
        sub("TOPC", f4(9)) + sub("TREF", "lost") + sub("TCLR", u4(0)) + sub("TVAL", u2(1)) +
        sub("CTEX", s0("Planar Image Map")) + sub("TFLG", u2(0x7C)) + sub("TSIZ", f4(1, 2, 3)) +
        sub("TCTR", f4(4, 5, 6)) + sub("TFAL", f4(7, 8, 9)) + sub("TAMP", f4(10)) +
        sub("TFP0", f4(11)) + sub("TFP1", f4(12)) + sub("TAAS", f4(0.5F)) + sub("TOPC", f4(0.25F)) +
        sub("TREF", "null") + sub("TCLR", u4(0)) + sub("BTEX", s0("Wood")) + sub("TFLG", u2(0x2)) +
        sub("TCLR", u1(255) + u1(0) + u1(51) + u1(0)) + sub("TAMP", f4(99))));
    const st_lwTexture &image = *object->surfaces->color.textures;
    const st_lwImageMap &map = image.param.imageMap;
    EXPECT_EQ(numbers(image.axis, map.axis, image.tmap.coordSystem, image.negative, map.pixelBlend,
                      map.aaFlags, map.aaStrength, image.tmap.size.value[1],
                      image.tmap.center.value[1], image.tmap.falloff.value[1], map.amplitude.value,
                      map.wrapWidth.value, map.wrapHeight.value, image.opacity.value),
              numbers(2, 2, 1, 1, 1, 1, 0.5, 2, 5, 8, 10, 11, 12, 0.25));
    EXPECT_STREQ(image.tmap.refObject, "null");

    const st_lwTexture &wood = *object->surfaces->bump.textures;
    EXPECT_EQ(numbers(wood.axis, wood.param.procedural.axis, wood.param.procedural.value[0],
                      wood.opacity.value),
              numbers(1, 1, 1, 1));
    EXPECT_FLOAT_EQ(wood.param.procedural.value[2], 0.2F);
    EXPECT_STREQ(wood.param.procedural.name, "Wood");
}

TEST(LwobTexture, valueIsWrittenWhateverTheKind) {
    const Object object =
        there(loadSurface(sub("CTEX", s0("Wood")) + sub("TVAL", u2(128)) +
                          sub("BTEX", s0("Cubic Image Map")) + sub("TVAL", u2(0))));
    EXPECT_EQ(object->surfaces->color.textures->param.procedural.value[0], 0.5F);
    EXPECT_EQ(object->surfaces->bump.textures->param.imageMap.projection, 0);
}

// ------------------------------------------------------------- images and envelopes

TEST(LwobClip, indexIsTheNumberOfSurfacesBefore) {
    const Object object = there(loadLWOB(
        chunk("SURF", s0("a") + sub("RIMG", s0("first.tga"))) +
        chunk("SURF", s0("b") + sub("CTEX", s0("Planar Image Map")) + sub("TIMG", s0("map.tga")))));
    EXPECT_EQ(object->clipCount, 0);
    const st_lwClip *clip = there(object->clips);
    EXPECT_EQ(numbers(clip->type, clip->index, clip->gamma.value,
                      object->surfaces->reflection.clipIndex, object->surfaces->reflection.options),
              numbers(lwID("STIL"), 0, 1, 0, 3));
    EXPECT_STREQ(clip->source.still.name, "first.tga");
    ASSERT_NE(clip->next, nullptr);
    EXPECT_EQ(clip->next->index, 1);
    EXPECT_EQ(object->surfaces->next->color.textures->param.imageMap.clipIndex, 1);
}

TEST(LwobClip, sequencesAreKnownByTheirNames) {
    const struct {
        std::string name, prefix;
    } cases[] = {{"fire (sequence)", "fire"}, {"fire(sequence)", "fir"}, {"(sequence)", ""}};
    for (const auto &item : cases) {
        const Object object = there(loadSurface(sub("TIMG", s0(item.name))));
        ASSERT_EQ(object->clips->type, lwID("ISEQ"));
        EXPECT_EQ(object->clips->source.sequence.prefix, item.prefix);
        EXPECT_EQ(object->clips->source.sequence.digits, 3);
    }
    const Object nameless = there(loadSurface(sub("TIMG", s0(""))));
    EXPECT_EQ(nameless->clips->type, lwID("STIL"));
    EXPECT_EQ(nameless->clips->source.still.name, nullptr);
}

TEST(LwobEnvelope, velocityMovesTheCentre) {
    const Object object =
        there(loadSurface(sub("CTEX", s0("Wood")) + sub("TCTR", f4(0, 2, 0)) +
                          sub("TVEL", f4(1, 0, -0.5F)) + sub("TVEL", f4(0, 0, 0))));
    EXPECT_EQ(object->surfaces->color.textures->tmap.center.envelope, 4);
    ASSERT_EQ(object->envelopeCount, 6);
    const struct {
        const char *name;
        float start, end;
    } cases[] = {{"Position.X", 0, 30}, {"Position.Y", 2, 2}, {"Position.Z", 0, -15}};
    st_lwEnvelope *envelope = object->envelopes;
    for (int i = 0; i < 3; i++, envelope = envelope->next) {
        EXPECT_EQ(envelope->index, i + 1);
        EXPECT_EQ(envelope->type, 0x301 + i);
        EXPECT_STREQ(envelope->name, cases[i].name);
        ASSERT_EQ(envelope->keyCount, 2);
        EXPECT_EQ(envelope->keys->shape, lwID("LINE"));
        EXPECT_EQ(envelope->keys->next->time, 1.0F);
        EXPECT_EQ(evalEnvelope(envelope, 0), cases[i].start);
        EXPECT_EQ(evalEnvelope(envelope, 1), cases[i].end);
        EXPECT_FLOAT_EQ(evalEnvelope(envelope, 3),
                        cases[i].start + 3 * (cases[i].end - cases[i].start));
    }
}
