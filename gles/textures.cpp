// Texture objects, their images and parameters, and which of them is drawn with.
#include "gles/textures.h"

#include "gles/pixels.h"
#include "gles/state.h"

#include <unordered_map>
#include <vector>

// A name of OpenGL's. Its target is that of the first binding.
struct st_texture {
    GLenum target;   // GL_TEXTURE_1D or GL_TEXTURE_2D; 0: never bound
    GLuint es;       // 0: not made yet
    GLint minFilter; // as set, also with mipmaps, which make the texture incomplete
    bool hasImage;
};

static st_texture defaults[2]; // the textures that are bound by name 0
static std::unordered_map<GLuint, st_texture> textures;
static GLuint lastName = 0;
static GLuint bound[2]; // names, of GL_TEXTURE_1D and GL_TEXTURE_2D
static GLuint boundInEs = 0;

constexpr st_texture UNUSED = {0, 0, GL_NEAREST_MIPMAP_LINEAR, false};

// Names stay taken: who holds an old one draws untextured until it is made again.
void forgetTextures() {
    for (auto &entry : textures)
        entry.second = UNUSED;
    for (int i = 0; i < 2; i++) {
        defaults[i] = UNUSED;
        bound[i] = 0;
    }
    boundInEs = 0;
}

// 0 for 1-D, 1 for 2-D, -1 with the error set for another.
static int findTarget(GLenum target) {
    if (target == GL_TEXTURE_1D || target == GL_TEXTURE_2D)
        return target == GL_TEXTURE_2D ? 1 : 0;
    setUnknown(target == GL_TEXTURE_3D || target == GL_PROXY_TEXTURE_1D ||
               target == GL_PROXY_TEXTURE_2D || target == GL_PROXY_TEXTURE_3D);
    return -1;
}

static st_texture *boundTexture(int index) {
    return bound[index] == 0 ? &defaults[index] : &textures[bound[index]];
}

static void bindInEs(GLuint es) {
    if (es == boundInEs)
        return;
    gles.es3.BindTexture(GL_TEXTURE_2D, es);
    boundInEs = es;
}

// The texture of ES is made when it is first needed.
static void bindForChange(st_texture *texture) {
    if (texture->es == 0)
        gles.es3.GenTextures(1, &texture->es);
    bindInEs(texture->es);
}

static bool isComplete(const st_texture *texture) {
    return texture->hasImage &&
           (texture->minFilter == GL_NEAREST || texture->minFilter == GL_LINEAR);
}

bool bindTextureToDraw() {
    for (int index = 1; index >= 0; index--) {
        if (!gles.texturing[index])
            continue;
        const st_texture *texture = boundTexture(index);
        if (!isComplete(texture))
            continue;
        bindInEs(texture->es);
        return true;
    }
    return false;
}

// ------------------------------------------------------------------------------ names

void glGenTextures(GLsizei count, GLuint *names) {
    if (!beginCall())
        return;
    if (count < 0)
        setError(GL_INVALID_VALUE);
    for (int i = 0; i < count; i++) {
        do
            lastName++;
        while (lastName == 0 || textures.count(lastName) != 0);
        textures[lastName] = UNUSED;
        names[i] = lastName;
    }
}

// A texture is not unbound in ES: deleting it does that.
static void deleteTexture(GLuint name) {
    const auto found = textures.find(name);
    if (found == textures.end())
        return;
    for (GLuint &binding : bound)
        if (binding == name)
            binding = 0;
    if (found->second.es != 0) {
        gles.es3.DeleteTextures(1, &found->second.es);
        if (boundInEs == found->second.es)
            boundInEs = 0;
    }
    textures.erase(found);
}

void glDeleteTextures(GLsizei count, const GLuint *names) {
    if (!beginCall())
        return;
    if (count < 0)
        setError(GL_INVALID_VALUE);
    for (int i = 0; i < count; i++)
        deleteTexture(names[i]);
}

void glBindTexture(GLenum target, GLuint name) {
    if (!beginCall())
        return;
    const int index = findTarget(target);
    if (index < 0)
        return;
    if (name != 0) {
        st_texture *texture = &textures.emplace(name, UNUSED).first->second;
        if (texture->target != 0 && texture->target != target) {
            setError(GL_INVALID_OPERATION);
            return;
        }
        texture->target = target;
    }
    bound[index] = name;
}

// ------------------------------------------------------------------------- parameters

static bool isFilter(GLint value, bool minifying) {
    return value == GL_NEAREST || value == GL_LINEAR ||
           (minifying && value >= GL_NEAREST_MIPMAP_NEAREST && value <= GL_LINEAR_MIPMAP_LINEAR);
}

static bool isKnownParameter(GLenum name) {
    return name == GL_TEXTURE_WRAP_R || name == GL_TEXTURE_PRIORITY ||
           name == GL_TEXTURE_BORDER_COLOR ||
           (name >= GL_TEXTURE_MIN_LOD && name <= GL_TEXTURE_MAX_LEVEL);
}

void glTexParameteri(GLenum target, GLenum name, GLint value) {
    if (!beginCall())
        return;
    const int index = findTarget(target);
    if (index < 0)
        return;
    const bool minifying = name == GL_TEXTURE_MIN_FILTER;
    const bool filter = minifying || name == GL_TEXTURE_MAG_FILTER;
    const bool wrap = name == GL_TEXTURE_WRAP_S || name == GL_TEXTURE_WRAP_T;
    if ((filter && isFilter(value, minifying)) ||
        (wrap && (value == GL_REPEAT || value == GL_CLAMP_TO_EDGE))) {
        st_texture *texture = boundTexture(index);
        bindForChange(texture);
        gles.es3.TexParameteri(GL_TEXTURE_2D, name, value);
        if (minifying)
            texture->minFilter = value;
        return;
    }
    setUnknown(isKnownParameter(name) || (wrap && value == GL_CLAMP));
}

void glTexEnvi(GLenum target, GLenum name, GLint value) {
    if (!beginCall())
        return;
    if (target != GL_TEXTURE_ENV || name != GL_TEXTURE_ENV_MODE)
        setUnknown(target == GL_TEXTURE_ENV && name == GL_TEXTURE_ENV_COLOR);
    else if (value != GL_MODULATE)
        setUnknown(value == GL_DECAL || value == GL_BLEND || value == GL_REPLACE);
}

// ----------------------------------------------------------------------------- images

struct st_upload {
    int index; // 0: 1-D, 1: 2-D
    GLint level;
    GLint internalFormat;
    GLsizei width;
    GLsizei height;
    GLint border;
    GLenum format;
    GLenum type;
    const void *pixels;
};

// 0 is an image too: none at all.
static bool isSide(int pixels) {
    GLint most = 0;
    gles.es3.GetIntegerv(GL_MAX_TEXTURE_SIZE, &most);
    return pixels >= 0 && pixels <= most && (pixels & (pixels - 1)) == 0;
}

static GLenum uploadError(const st_upload *upload) {
    if (upload->level < 0 || upload->border < 0 || upload->border > 1 ||
        (upload->border == 0 && (!isSide(upload->width) || !isSide(upload->height))))
        return GL_INVALID_VALUE;
    const GLint kept = upload->internalFormat;
    if (upload->level > 0 || upload->border > 0 || pixelBytes(upload->format, upload->type) == 0 ||
        (kept != GL_RGB && kept != GL_RGBA && kept != GL_RGB8 && kept != GL_RGBA8 && kept != 3 &&
         kept != 4))
        return GL_INVALID_OPERATION;
    return GL_NO_ERROR;
}

static void uploadImage(const st_upload *upload) {
    const GLenum error = uploadError(upload);
    if (error != GL_NO_ERROR) {
        setError(error);
        return;
    }
    const GLint kept = upload->internalFormat;
    const bool opaque = kept == GL_RGB || kept == GL_RGB8 || kept == 3;
    std::vector<unsigned char> rgba(static_cast<std::size_t>(upload->width) *
                                    static_cast<std::size_t>(upload->height) * 4);
    if (upload->pixels != nullptr)
        toRgba(upload->pixels, upload->format, upload->type, upload->width, upload->height,
               gles.unpackAlignment, opaque, rgba.data());
    st_texture *texture = boundTexture(upload->index);
    bindForChange(texture);
    gles.es3.TexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, upload->width, upload->height, 0, GL_RGBA,
                        GL_UNSIGNED_BYTE, rgba.data());
    texture->hasImage = !rgba.empty();
}

void glTexImage1D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLint border,
                  GLenum format, GLenum type, const GLvoid *pixels) {
    if (!beginCall())
        return;
    const st_upload upload = {0, level, internalFormat, width, 1, border, format, type, pixels};
    if (target == GL_TEXTURE_1D)
        uploadImage(&upload);
    else
        setUnknown(target == GL_PROXY_TEXTURE_1D);
}

void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
                  GLint border, GLenum format, GLenum type, const GLvoid *pixels) {
    if (!beginCall())
        return;
    const st_upload upload = {1,      level,  internalFormat, width, height,
                              border, format, type,           pixels};
    if (target == GL_TEXTURE_2D)
        uploadImage(&upload);
    else
        setUnknown(target == GL_PROXY_TEXTURE_2D);
}
