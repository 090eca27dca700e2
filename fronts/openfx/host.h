// What the front asks and borrows of its host. Nothing borrowed outlives its object, and no object
// outlives an action. What the host cannot do ends the action: its status is thrown.
#pragma once

#include <cstddef>

#include "fronts/openfx/openfx.h"
#include "nevrel.h"

/// The channels of a pixel.
struct Components {
    const char* name;  ///< the interface's
    nevrel_order order;
    int channels;
};
inline constexpr Components componentKinds[] = {{"OfxImageComponentRGBA", NEVREL_RGBA, 4},
                                                {"OfxImageComponentRGB", NEVREL_RGB, 3}};

/// The samples of a channel. Half comes last: older hosts do not know it.
struct Depth {
    const char* name;  ///< the interface's
    nevrel_sample sample;
    int bytes;
};
inline constexpr Depth depths[] = {{"OfxBitDepthByte", NEVREL_UINT8, 1},
                                   {"OfxBitDepthShort", NEVREL_UINT16, 2},
                                   {"OfxBitDepthFloat", NEVREL_FLOAT, 4},
                                   {"OfxBitDepthHalf", NEVREL_HALF, 2}};

/// The host's suites, from the load action to the unload action. The last may be missing.
struct Suites {
    const ofx::PropertySuite* properties;
    const ofx::EffectSuite* effects;
    const ofx::ParameterSuite* parameters;
    const ofx::MessageSuite* messages;
};
extern Suites suites;

/// Throws a status that is not ok.
void Require(ofx::Status status);

/// Tells the user, where the host can, why an action fails, and throws its status.
[[noreturn]] void Refuse(ofx::Effect effect, ofx::Status status, const char* why);

/// A set of properties. Writing a property or a value that the host does not know is no failure.
struct Properties {
    ofx::PropertySet handle = nullptr;

    void set(const char* name, int value, int index = 0) const;
    void set(const char* name, double value, int index = 0) const;
    void set(const char* name, const char* value, int index = 0) const;

    [[nodiscard]] int integer(const char* name, int index = 0) const;
    [[nodiscard]] double real(const char* name) const;
    [[nodiscard]] std::byte* pointer(const char* name) const;
    [[nodiscard]] ofx::RectI rect(const char* name) const;
    [[nodiscard]] bool is(const char* name, const char* value) const;
};

/// The image of a clip at a time. Throws badImageFormat for one that is in no format of ours.
class Image {
  public:
    Image(ofx::Effect effect, const char* clip, double time);
    ~Image();
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    [[nodiscard]] int pixelBytes() const { return depth->bytes * components->channels; }
    [[nodiscard]] std::byte* at(int x, int y) const;

    std::byte* data = nullptr;  ///< the bottom left pixel; null where the clip has no picture
    ofx::RectI bounds{};
    std::ptrdiff_t rowBytes = 0;  ///< from a row to the one above
    const Depth* depth = nullptr;
    const Components* components = nullptr;
    nevrel_order order{};

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
