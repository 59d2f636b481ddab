#include "tests/reader/readerTest.h"

static Object loadLWOB(const std::string &chunks, Failure *failure = nullptr) {
    return load(form("LWOB", chunks), failure);
}

// The object of one surface with these sub-chunks.
static Object loadSurface(const std::string &subChunks) {
    return loadLWOB(chunk("SURF", s0("name") + subChunks));
}

static const std::string points =
    chunk("PNTS", f4(0, 0, 0) + f4(0, 1, 0) + f4(1, 1, 0) + f4(1, 0, 0));

static std::string polygon(std::initializer_list<unsigned> indices, int surface) {
    std::string bytes = u2(static_cast<unsigned>(indices.size()));
    for (const unsigned index : indices)
        bytes += u2(index);
    return bytes + u2(static_cast<unsigned>(surface) & 0xFFFF);
}

static std::string tooManyPoints(unsigned count) {
    std::string bytes;
    for (unsigned i = 0; i < count; i++)
        bytes += f4(0, 0, 0);
    return chunk("PNTS", bytes);
}

// ------------------------------------------------------------------------ geometry

TEST(Lwob, oneLayerWithTheSurfaceNamesAsTags) {
    const Object object =
        loadLWOB(points + chunk("SRFS", s0("red") + s0("blue")) +
                 chunk("POLS", polygon({0, 3, 1}, 2) + polygon({2, 1, 3}, 1)) +
                 chunk("????", "odd") + chunk("SURF", s0("blue") + sub("SMAN", f4(1))));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->layerCount, 1);
    EXPECT_EQ(object->tagList.count, 2);
    const st_lwPolygonList &list = object->layers->polygonList;
    ASSERT_EQ(list.count, 2);
    EXPECT_EQ(list.polygons[0].type, lwID("FACE"));
    EXPECT_EQ(list.polygons[0].surface, object->surfaces);
    EXPECT_EQ(list.polygons[0].surface->smoothing, 1.0F);
    EXPECT_STREQ(list.polygons[1].surface->name, "red");
    EXPECT_EQ(list.polygons[1].vertices[0].index, 2);
    EXPECT_EQ(list.polygons[1].vertices[0].normal[2], 1.0F);
    EXPECT_EQ(object->layers->bbox[3], 1.0F);
}

TEST(Lwob, detailPolygonsAreOrdinaryOnes) {
    const Object object =
        loadLWOB(points + chunk("SRFS", s0("a") + s0("b")) +
                 chunk("POLS", polygon({0, 3, 1}, -2) + u2(1) + polygon({2, 1}, 1)));
    ASSERT_NE(object, nullptr);
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
    const Object object =
        loadLWOB(tooManyPoints(0xFF01) + chunk("POLS", wide + u2(1) + polygon({0xFF00}, 1)));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->layers->polygonList.polygons[0].vertexCount, 0x0402);
    EXPECT_EQ(object->layers->polygonList.polygons[0].flags, 0);
    EXPECT_EQ(object->layers->polygonList.polygons[1].vertices[0].index, 0xFF00);
}

TEST(Lwob, surfaceNumberZeroIsNoTag) {
    const std::string polygons = chunk("POLS", polygon({0, 3, 1}, 0));
    Failure failure;
    EXPECT_EQ(loadLWOB(points + chunk("SRFS", s0("a")) + polygons, &failure), nullptr);
    EXPECT_EQ(failure.id, lwID("POLS"));
    EXPECT_EQ(failure.position, -1);
    const Object object = loadLWOB(points + polygons);
    ASSERT_NE(object, nullptr);
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
    const std::string whole = form("LWOB", points + chunk("SURF", s0("a") + sub("SMAN", f4(1))));
    Failure failure;
    EXPECT_EQ(load(whole.substr(0, whole.size() - 1), &failure), nullptr);
    EXPECT_EQ(failure.id, lwID("SURF"));
    EXPECT_EQ(failure.position, static_cast<int>(whole.size()) - 1);

    writeFile(testPath("newer.lwo"), form("LWO2", points));
    EXPECT_EQ(lwGetObject5(testPath("newer.lwo").c_str(), nullptr, &failure.position), nullptr);
    EXPECT_EQ(failure.position, 12);
    EXPECT_EQ(lwGetObject5(testPath("none").c_str(), nullptr, nullptr), nullptr);
}

// ---------------------------------------------------------------------- attributes

TEST(LwobSurface, attributes) {
    const Object object =
        loadSurface(sub("COLR", u1(255) + u1(51) + u1(0) + u1(9)) + sub("LUMI", u2(128)) +
                    sub("DIFF", u2(256)) + sub("SPEC", u2(0xFF80)) + sub("REFL", u2(64)) +
                    sub("TRAN", u2(192)) + sub("GLOS", u2(1024)) + sub("RFLT", u2(2)) +
                    sub("RSAN", f4(0.5F)) + sub("RIND", f4(1.5F)) + sub("SMAN", f4(0.25F)));
    ASSERT_NE(object, nullptr);
    const st_lwSurface &surface = *object->surfaces;
    EXPECT_STREQ(surface.name, "name");
    EXPECT_EQ(surface.srcName, nullptr);
    EXPECT_EQ(surface.color.rgb[0], 1.0F);
    EXPECT_FLOAT_EQ(surface.color.rgb[1], 0.2F);
    EXPECT_EQ(surface.luminosity.value, 0.5F);
    EXPECT_EQ(surface.diffuse.value, 1.0F);
    EXPECT_EQ(surface.specularity.value, -0.5F);
    EXPECT_EQ(surface.reflection.value, 0.25F);
    EXPECT_EQ(surface.transparency.value, 0.75F);
    EXPECT_NEAR(surface.glossiness.value, 1.0F / 3, 1e-5F);
    EXPECT_EQ(surface.reflection.options, 2);
    EXPECT_EQ(surface.reflection.seamAngle, 0.5F);
    EXPECT_EQ(surface.eta.value, 1.5F);
    EXPECT_EQ(surface.smoothing, 0.25F);
    EXPECT_EQ(surface.bump.value, 1.0F);

    const Object precise =
        loadSurface(sub("VLUM", f4(2)) + sub("VDIF", f4(3)) + sub("VSPC", f4(4)));
    ASSERT_NE(precise, nullptr);
    EXPECT_EQ(precise->surfaces->luminosity.value, 2.0F);
    EXPECT_EQ(precise->surfaces->diffuse.value, 3.0F);
    EXPECT_EQ(precise->surfaces->specularity.value, 4.0F);
}

TEST(LwobSurface, flags) {
    const Object some = loadSurface(sub("FLAG", u2(0x104)));
    ASSERT_NE(some, nullptr);
    EXPECT_EQ(some->surfaces->smoothing, 1.56207F);
    EXPECT_EQ(some->surfaces->sideFlags, 3);
    EXPECT_EQ(some->surfaces->colorHighlight.value, 0.0F);
    const Object others = loadSurface(sub("FLAG", u2(0x298)));
    ASSERT_NE(others, nullptr);
    EXPECT_EQ(others->surfaces->colorHighlight.value, 1.0F);
    EXPECT_EQ(others->surfaces->colorFilter.value, 1.0F);
    EXPECT_EQ(others->surfaces->diffuseSharpness.value, 0.5F);
    EXPECT_EQ(others->surfaces->additiveTransparency.value, 1.0F);
    EXPECT_EQ(others->surfaces->smoothing, 0.0F);
    EXPECT_EQ(others->surfaces->sideFlags, 1);
}

TEST(LwobSurface, shaders) {
    const Object object =
        loadSurface(sub("SDAT", "lost") + sub("SHDR", "toon") + sub("SDAT", "old!") +
                    sub("SDAT", "data") + sub("SHDR", s0("second")));
    ASSERT_NE(object, nullptr);
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
        const Object object = loadSurface(sub("CTEX", item.name));
        ASSERT_NE(object, nullptr);
        const st_lwTexture *texture = object->surfaces->color.textures;
        ASSERT_NE(texture, nullptr);
        EXPECT_EQ(texture->type, item.type) << item.name;
        EXPECT_EQ(texture->enabled, 1);
        EXPECT_EQ(texture->opacity.value, 1.0F);
        EXPECT_EQ(texture->tmap.size.value[0], 1.0F);
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
    const Object object = loadSurface(
        sub("CTEX", s0("b")) + sub("CTEX", s0("a")) + sub("DTEX", s0("1")) + sub("STEX", s0("2")) +
        sub("RTEX", s0("3")) + sub("TTEX", s0("4")) + sub("LTEX", s0("5")) + sub("BTEX", s0("6")));
    ASSERT_NE(object, nullptr);
    const st_lwSurface &surface = *object->surfaces;
    EXPECT_STREQ(surface.color.textures->param.procedural.name, "b");
    EXPECT_STREQ(surface.color.textures->next->param.procedural.name, "a");
    EXPECT_STREQ(surface.diffuse.textures->param.procedural.name, "1");
    EXPECT_STREQ(surface.specularity.textures->param.procedural.name, "2");
    EXPECT_STREQ(surface.reflection.textures->param.procedural.name, "3");
    EXPECT_STREQ(surface.transparency.textures->param.procedural.name, "4");
    EXPECT_STREQ(surface.luminosity.textures->param.procedural.name, "5");
    EXPECT_STREQ(surface.bump.textures->param.procedural.name, "6");
}

TEST(LwobTexture, parametersGoToTheLatestTexture) {
    const Object object = loadSurface(
        sub("TOPC", f4(9)) + sub("TREF", "lost") + sub("TCLR", u4(0)) + sub("TVAL", u2(1)) +
        sub("CTEX", s0("Planar Image Map")) + sub("TFLG", u2(0x7C)) + sub("TSIZ", f4(1, 2, 3)) +
        sub("TCTR", f4(4, 5, 6)) + sub("TFAL", f4(7, 8, 9)) + sub("TAMP", f4(10)) +
        sub("TFP0", f4(11)) + sub("TFP1", f4(12)) + sub("TAAS", f4(0.5F)) + sub("TOPC", f4(0.25F)) +
        sub("TREF", "null") + sub("TCLR", u4(0)) + sub("BTEX", s0("Wood")) + sub("TFLG", u2(0x2)) +
        sub("TCLR", u1(255) + u1(0) + u1(51) + u1(0)) + sub("TAMP", f4(99)));
    ASSERT_NE(object, nullptr);
    const st_lwTexture &image = *object->surfaces->color.textures;
    const st_lwImageMap &map = image.param.imageMap;
    EXPECT_EQ(image.axis, 2);
    EXPECT_EQ(map.axis, 2);
    EXPECT_EQ(image.tmap.coordSystem, 1);
    EXPECT_EQ(image.negative, 1);
    EXPECT_EQ(map.pixelBlend, 1);
    EXPECT_EQ(map.aaFlags, 1);
    EXPECT_EQ(map.aaStrength, 0.5F);
    EXPECT_EQ(image.tmap.size.value[1], 2.0F);
    EXPECT_EQ(image.tmap.center.value[1], 5.0F);
    EXPECT_EQ(image.tmap.falloff.value[1], 8.0F);
    EXPECT_EQ(map.amplitude.value, 10.0F);
    EXPECT_EQ(map.wrapWidth.value, 11.0F);
    EXPECT_EQ(map.wrapHeight.value, 12.0F);
    EXPECT_EQ(image.opacity.value, 0.25F);
    EXPECT_STREQ(image.tmap.refObject, "null");

    const st_lwTexture &wood = *object->surfaces->bump.textures;
    EXPECT_EQ(wood.axis, 1);
    EXPECT_EQ(wood.param.procedural.axis, 1);
    EXPECT_EQ(wood.param.procedural.value[0], 1.0F);
    EXPECT_FLOAT_EQ(wood.param.procedural.value[2], 0.2F);
    EXPECT_STREQ(wood.param.procedural.name, "Wood");
    EXPECT_EQ(wood.opacity.value, 1.0F);
}

TEST(LwobTexture, valueIsWrittenWhateverTheKind) {
    const Object object = loadSurface(sub("CTEX", s0("Wood")) + sub("TVAL", u2(128)) +
                                      sub("BTEX", s0("Cubic Image Map")) + sub("TVAL", u2(0)));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->surfaces->color.textures->param.procedural.value[0], 0.5F);
    EXPECT_EQ(object->surfaces->bump.textures->param.imageMap.projection, 0);
}

// ------------------------------------------------------------- images and envelopes

TEST(LwobClip, indexIsTheNumberOfSurfacesBefore) {
    const Object object = loadLWOB(
        chunk("SURF", s0("a") + sub("RIMG", s0("first.tga"))) +
        chunk("SURF", s0("b") + sub("CTEX", s0("Planar Image Map")) + sub("TIMG", s0("map.tga"))));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->clipCount, 0);
    const st_lwClip *clip = object->clips;
    ASSERT_NE(clip, nullptr);
    EXPECT_EQ(clip->type, lwID("STIL"));
    EXPECT_STREQ(clip->source.still.name, "first.tga");
    EXPECT_EQ(clip->index, 0);
    EXPECT_EQ(clip->gamma.value, 1.0F);
    EXPECT_EQ(object->surfaces->reflection.clipIndex, 0);
    EXPECT_EQ(object->surfaces->reflection.options, 3);
    ASSERT_NE(clip->next, nullptr);
    EXPECT_EQ(clip->next->index, 1);
    EXPECT_EQ(object->surfaces->next->color.textures->param.imageMap.clipIndex, 1);
}

TEST(LwobClip, sequencesAreKnownByTheirNames) {
    const struct {
        std::string name, prefix;
    } cases[] = {{"fire (sequence)", "fire"}, {"fire(sequence)", "fir"}, {"(sequence)", ""}};
    for (const auto &item : cases) {
        const Object object = loadSurface(sub("TIMG", s0(item.name)));
        ASSERT_NE(object, nullptr);
        ASSERT_EQ(object->clips->type, lwID("ISEQ"));
        EXPECT_EQ(object->clips->source.sequence.prefix, item.prefix);
        EXPECT_EQ(object->clips->source.sequence.digits, 3);
    }
    const Object nameless = loadSurface(sub("TIMG", s0("")));
    ASSERT_NE(nameless, nullptr);
    EXPECT_EQ(nameless->clips->type, lwID("STIL"));
    EXPECT_EQ(nameless->clips->source.still.name, nullptr);
}

TEST(LwobEnvelope, velocityMovesTheCentre) {
    const Object object = loadSurface(sub("CTEX", s0("Wood")) + sub("TCTR", f4(0, 2, 0)) +
                                      sub("TVEL", f4(1, 0, -0.5F)) + sub("TVEL", f4(0, 0, 0)));
    ASSERT_NE(object, nullptr);
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
