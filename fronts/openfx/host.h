// What the front asks and borrows of its host. Nothing borrowed outlives its object, and no object
// outlives an action.
#pragma once

#include <cstddef>

#include "fronts/openfx/formats.h"
#include "fronts/openfx/openfx.h"
#include "nevrel.h"

/// The host's suites, from the load action to the unload action. The last may be missing.
struct Suites {
    const ofx::PropertySuite* properties;
    const ofx::EffectSuite* effects;
    const ofx::ParameterSuite* parameters;
    const ofx::MessageSuite* messages;
};
extern Suites suites;

/// A set of properties. The first status that is not ok is kept; from then on nothing is written,
/// and 0 is read. Writing a property or a value that the host does not know is no failure.
struct Properties {
    ofx::PropertySet handle = nullptr;
    ofx::Status status = ofx::ok;

    void set(const char* name, int value, int index = 0);
    void set(const char* name, double value, int index = 0);
    void set(const char* name, const char* value, int index = 0);

    int integer(const char* name, int index = 0);
    double real(const char* name);
    std::byte* pointer(const char* name);
    ofx::RectI rect(const char* name);
    bool is(const char* name, const char* value);
};

/// The image of a clip at a time.
class Image {
  public:
    Image(ofx::Effect effect, const char* clip, double time);
    ~Image();
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    [[nodiscard]] int pixelBytes() const { return depth->bytes * components->channels; }
    [[nodiscard]] std::byte* at(int x, int y) const;

    /// Not ok when the host failed, or has given an image that is in no format of ours.
    ofx::Status status = ofx::ok;
    std::byte* data = nullptr;  ///< the bottom left pixel; null where the clip has no picture
    ofx::RectI bounds{};
    std::ptrdiff_t rowBytes = 0;  ///< from a row to the one above
    const Depth* depth = nullptr;
    const Components* components = nullptr;
    bool isPremultiplied = false;

  private:
    Image() = default;
    void read();

    ofx::PropertySet handle_ = nullptr;
};

/// Memory of the host's.
class Memory {
  public:
    Memory(ofx::Effect effect, std::size_t bytes);
    ~Memory();
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;

    /// Null when the host has none.
    [[nodiscard]] std::byte* bytes() const { return static_cast<std::byte*>(bytes_); }

  private:
    Memory() = default;

    ofx::Memory handle_ = nullptr;
    void* bytes_ = nullptr;
};

/// Tells the user, where the host can, why an action fails; its status.
ofx::Status Refuse(ofx::Effect effect, ofx::Status status, const char* why);
