#include "fronts/openfx/host.h"

#include <cstring>

Suites suites;

namespace {

template <typename Value>
void Set(ofx::Status (*setter)(ofx::PropertySet, const char*, int, Value), ofx::PropertySet set,
         const char* name, int index, Value value) {
    const ofx::Status status = setter(set, name, index, value);
    if (status != ofx::unknown && status != ofx::badValue) Require(status);
}

template <typename Value>
Value Get(ofx::Status (*getter)(ofx::PropertySet, const char*, int, Value*), ofx::PropertySet set,
          const char* name, int index = 0) {
    Value value{};
    Require(getter(set, name, index, &value));
    return value;
}

}  // namespace

void Require(ofx::Status status) {
    if (status != ofx::ok) throw status;
}

void Refuse(ofx::Effect effect, ofx::Status status, const char* why) {
    if (suites.messages != nullptr)
        suites.messages->message(effect, "OfxMessageError", nullptr, "%s", why);
    throw status;
}

void Properties::set(const char* name, int value, int index) const {
    Set(suites.properties->propSetInt, handle, name, index, value);
}

void Properties::set(const char* name, double value, int index) const {
    Set(suites.properties->propSetDouble, handle, name, index, value);
}

void Properties::set(const char* name, const char* value, int index) const {
    Set(suites.properties->propSetString, handle, name, index, value);
}

int Properties::integer(const char* name, int index) const {
    return Get(suites.properties->propGetInt, handle, name, index);
}

double Properties::real(const char* name) const {
    return Get(suites.properties->propGetDouble, handle, name);
}

std::byte* Properties::pointer(const char* name) const {
    return static_cast<std::byte*>(Get(suites.properties->propGetPointer, handle, name));
}

ofx::RectI Properties::rect(const char* name) const {
    return {integer(name, 0), integer(name, 1), integer(name, 2), integer(name, 3)};
}

bool Properties::is(const char* name, const char* value) const {
    const char* text = Get(suites.properties->propGetString, handle, name);
    return text != nullptr && std::strcmp(text, value) == 0;
}

// Constructors go on from another one, so that the destructor runs if they end with a failure.

Image::Image(ofx::Effect effect, const char* clip, double time) : Image() {
    ofx::Clip handle = nullptr;
    Require(suites.effects->clipGetHandle(effect, clip, &handle, nullptr));
    const ofx::Status status = suites.effects->clipGetImage(handle, time, nullptr, &handle_);
    if (status != ofx::ok) handle_ = nullptr;
    if (status != ofx::failed) Require(status);  // failed: there is no picture at that time
    if (handle_ != nullptr) read();
}

Image::~Image() {
    if (handle_ != nullptr) suites.effects->clipReleaseImage(handle_);
}

void Image::read() {
    const Properties properties{handle_};
    data = properties.pointer("OfxImagePropData");
    bounds = properties.rect("OfxImagePropBounds");
    rowBytes = properties.integer("OfxImagePropRowBytes");
    for (const Depth& known : depths) {
        if (properties.is("OfxImageEffectPropPixelDepth", known.name)) depth = &known;
    }
    for (const Components& known : componentKinds) {
        if (properties.is("OfxImageEffectPropComponents", known.name)) components = &known;
    }
    if (depth == nullptr || components == nullptr) return Require(ofx::badImageFormat);
    const bool isPremultiplied =
        properties.is("OfxImageEffectPropPreMultiplication", "OfxImageAlphaPremultiplied");
    const bool multiplies = isPremultiplied && components->order == NEVREL_RGBA;
    order = multiplies ? NEVREL_RGBA_PREMULTIPLIED : components->order;
}

std::byte* Image::at(int x, int y) const {
    return data + (std::ptrdiff_t{y} - bounds.y1) * rowBytes +
           (std::ptrdiff_t{x} - bounds.x1) * pixelBytes();
}

Memory::Memory(ofx::Effect effect, std::size_t bytes) : Memory() {
    if (suites.effects->imageMemoryAlloc(effect, bytes, &handle_) != ofx::ok) handle_ = nullptr;
    if (handle_ != nullptr && suites.effects->imageMemoryLock(handle_, &bytes_) != ofx::ok)
        bytes_ = nullptr;
}

Memory::~Memory() {
    if (bytes_ != nullptr) suites.effects->imageMemoryUnlock(handle_);
    if (handle_ != nullptr) suites.effects->imageMemoryFree(handle_);
}
