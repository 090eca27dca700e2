// A small OpenFX host: it lends what an effect asks for, keeps books of it, and can fail.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <variant>
#include <vector>

#include "fronts/openfx/openfx.h"
#include "tests/kernel/hostile_image.h"

/// The values of a property or a parameter.
using Values = std::vector<std::variant<int, double, std::string, void*>>;

struct ofx::PropertySetRecord {
    std::map<std::string, Values> values;

    /// "value value"; nothing for a property that is not there.
    [[nodiscard]] std::string text(const std::string& name) const;
};

/// A picture as the host keeps it: pixels tight and top down, the way of the C interface.
struct Frame {
    std::string depth = "OfxBitDepthByte", components = "OfxImageComponentRGBA";
    std::string premultiplication = "OfxImageAlphaUnPremultiplied";
    ofx::RectI bounds{};
    std::vector<std::byte> pixels{};

    [[nodiscard]] int width() const { return bounds.x2 - bounds.x1; }
    [[nodiscard]] int height() const { return bounds.y2 - bounds.y1; }
    [[nodiscard]] int rowSize() const { return static_cast<int>(pixels.size()) / height(); }
};

/// The image in which it is lent. Its pixels are taken back at the end.
class LentImage {
  public:
    LentImage(Frame& picture, const Layout& layout);
    ~LentImage();
    LentImage(const LentImage&) = delete;
    LentImage& operator=(const LentImage&) = delete;

    ofx::PropertySetRecord properties;

  private:
    Frame& picture_;
    HostileImage<std::byte> image_;
};

struct ofx::ClipRecord {
    ofx::PropertySetRecord properties;
    LentImage* image = nullptr;
    ofx::RectD region{};
};

struct ofx::ParameterRecord {
    std::string type, name;
    ofx::PropertySetRecord properties;
    Values value;  ///< at the time of the frame; 1 at every other
};

/// An effect, as descriptor and as instance.
struct ofx::EffectRecord {
    ofx::PropertySetRecord properties;
    std::map<std::string, ofx::ClipRecord> clips;
    std::vector<ofx::ParameterRecord> parameters;

    ofx::ParameterRecord& parameter(const std::string& name);
};

/// What the host has counted and what it does wrong.
struct Books {
    int lent = 0;                   ///< images, memory and locks, not given back
    int calls = 0;                  ///< that may fail
    int failingCall = 0;            ///< counted from 1
    ofx::Status failure = ofx::ok;  ///< ok: the call throws instead
    int abort = 0;
    std::string missingSuite{};
    std::vector<std::string> messages{};
};
extern Books books;

inline constexpr double frameTime = 7;

extern ofx::Host testHost;
