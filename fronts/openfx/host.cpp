#include "fronts/openfx/host.h"

#include <cstring>

Suites suites;

namespace {

template <typename Value>
void Set(Properties& to, ofx::Status (*setter)(ofx::PropertySet, const char*, int, Value),
         const char* name, int index, Value value) {
    if (to.status != ofx::ok) return;
    const ofx::Status status = setter(to.handle, name, index, value);
    if (status != ofx::unknown && status != ofx::badValue) to.status = status;
}

template <typename Value>
Value Get(Properties& from, ofx::Status (*getter)(ofx::PropertySet, const char*, int, Value*),
          const char* name, int index = 0) {
    Value value{};
    if (from.status == ofx::ok) from.status = getter(from.handle, name, index, &value);
    return from.status == ofx::ok ? value : Value{};
}

}  // namespace

void Properties::set(const char* name, int value, int index) {
    Set(*this, suites.properties->propSetInt, name, index, value);
}

void Properties::set(const char* name, double value, int index) {
    Set(*this, suites.properties->propSetDouble, name, index, value);
}

void Properties::set(const char* name, const char* value, int index) {
    Set(*this, suites.properties->propSetString, name, index, value);
}

int Properties::integer(const char* name, int index) {
    return Get(*this, suites.properties->propGetInt, name, index);
}

double Properties::real(const char* name) {
    return Get(*this, suites.properties->propGetDouble, name);
}

std::byte* Properties::pointer(const char* name) {
    return static_cast<std::byte*>(Get(*this, suites.properties->propGetPointer, name));
}

ofx::RectI Properties::rect(const char* name) {
    return {integer(name, 0), integer(name, 1), integer(name, 2), integer(name, 3)};
}

bool Properties::is(const char* name, const char* value) {
    const char* text = Get(*this, suites.properties->propGetString, name);
    return text != nullptr && std::strcmp(text, value) == 0;
}

// Constructors go on from another one, so that the destructor runs if a host's function throws.

Image::Image(ofx::Effect effect, const char* clip, double time) : Image() {
    ofx::Clip handle = nullptr;
    status = suites.effects->clipGetHandle(effect, clip, &handle, nullptr);
    if (status != ofx::ok) return;
    status = suites.effects->clipGetImage(handle, time, nullptr, &handle_);
    if (status != ofx::ok) handle_ = nullptr;
    if (status == ofx::failed) status = ofx::ok;  // there is no picture at that time
    if (handle_ != nullptr) read();
}

Image::~Image() {
    if (handle_ != nullptr) suites.effects->clipReleaseImage(handle_);
}

void Image::read() {
    Properties properties{handle_};
    data = properties.pointer("OfxImagePropData");
    bounds = properties.rect("OfxImagePropBounds");
    rowBytes = properties.integer("OfxImagePropRowBytes");
    for (const Depth& known : depths) {
        if (properties.is("OfxImageEffectPropPixelDepth", known.name)) depth = &known;
    }
    for (const Components& known : componentKinds) {
        if (properties.is("OfxImageEffectPropComponents", known.name)) components = &known;
    }
    isPremultiplied =
        properties.is("OfxImageEffectPropPreMultiplication", "OfxImageAlphaPremultiplied");
    status = properties.status;
    if (status == ofx::ok && (depth == nullptr || components == nullptr))
        status = ofx::badImageFormat;
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

ofx::Status Refuse(ofx::Effect effect, ofx::Status status, const char* why) {
    if (suites.messages != nullptr)
        suites.messages->message(effect, "OfxMessageError", nullptr, "%s", why);
    return status;
}
