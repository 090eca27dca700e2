// A small OpenFX host: it lends what an effect asks for, keeps books of it, and can fail.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <variant>
#include <vector>

#include "fronts/openfx/openfx.h"

struct ofx::PropertySetRecord {
    using Value = std::variant<int, double, std::string, void*>;
    std::map<std::string, std::vector<Value>> values;

    /// "name=value value", by name; texts for people are left out.
    [[nodiscard]] std::string text() const;
};

/// A picture as the host keeps it: pixels tight and top down, the way of the C interface.
struct Frame {
    std::string depth = "OfxBitDepthByte", components = "OfxImageComponentRGBA";
    std::string premultiplication = "OfxImageAlphaUnPremultiplied";
    ofx::RectI bounds{};
    std::vector<std::byte> pixels;

    [[nodiscard]] int width() const { return bounds.x2 - bounds.x1; }
    [[nodiscard]] int height() const { return bounds.y2 - bounds.y1; }
    [[nodiscard]] std::size_t rowSize() const {
        return pixels.size() / static_cast<std::size_t>(height());
    }
};

/// The image in which it is lent: rows upwards or downwards, with bytes between them.
class LentImage {
  public:
    LentImage(Frame& picture, bool negativeRowBytes, int padding);
    /// Takes the pixels back.
    ~LentImage();
    LentImage(const LentImage&) = delete;
    LentImage& operator=(const LentImage&) = delete;

    ofx::PropertySetRecord properties;

  private:
    std::byte* row(int fromTop);

    Frame& picture_;
    bool rowsDown_;
    std::size_t stride_;
    std::vector<std::byte> memory_;
};

struct ofx::ClipRecord {
    ofx::PropertySetRecord properties;
    LentImage* image = nullptr;
    ofx::RectD region{};
};

struct ofx::ParameterRecord {
    std::string type, name;
    ofx::PropertySetRecord properties;
    std::vector<double> value;  ///< at the time of the frame; 1 at every other

    void setToDefault();
};

/// An effect, as descriptor and as instance.
struct ofx::EffectRecord {
    ofx::PropertySetRecord properties;
    std::map<std::string, ofx::ClipRecord> clips;
    std::vector<ofx::ParameterRecord> parameters;

    void setValue(const std::string& name, const std::vector<double>& value);
};

/// What the host has counted and what it does wrong.
struct Books {
    int images = 0, memory = 0, locks = 0;  ///< lent and not given back
    int calls = 0;                          ///< that may fail
    int failingCall = 0;                    ///< counted from 1
    ofx::Status failure = ofx::ok;          ///< ok: the call throws instead
    int abort = 0;
    std::string missingSuite{};
    std::vector<std::string> messages{};
};
extern Books books;

inline constexpr double frameTime = 7;

extern ofx::Host testHost;
