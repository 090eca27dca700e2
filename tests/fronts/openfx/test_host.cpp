#include "tests/fronts/openfx/test_host.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <sstream>

struct ofx::MemoryRecord {
    void* bytes;
};

Books books;

namespace {

constexpr std::byte noise{0xa5};

/// A call that may fail does so when it is its turn.
ofx::Status Turn() {
    if (++books.calls != books.failingCall) return ofx::ok;
    if (books.failure == ofx::ok) throw books.calls;
    return books.failure;
}

template <typename Value, typename Given = Value>
ofx::Status Set(ofx::PropertySet set, const char* name, int index, Given given) {
    if (const ofx::Status status = Turn(); status != ofx::ok) return status;
    auto& values = set->values[name];
    values.resize(std::max(values.size(), static_cast<std::size_t>(index) + 1));
    values[static_cast<std::size_t>(index)] = Value(given);
    return ofx::ok;
}

template <typename Value, typename Taken = Value>
ofx::Status Get(ofx::PropertySet set, const char* name, int index, Taken* taken) {
    if (const ofx::Status status = Turn(); status != ofx::ok) return status;
    const auto found = set->values.find(name);
    if (found == set->values.end()) return ofx::unknown;
    auto& value = std::get<Value>(found->second.at(static_cast<std::size_t>(index)));
    if constexpr (std::is_same_v<Value, std::string>) {
        *taken = value.data();
    } else {
        *taken = value;
    }
    return ofx::ok;
}

ofx::EffectRecord& EffectOf(ofx::ParameterSet set) { return *reinterpret_cast<ofx::Effect>(set); }

ofx::Status GetImage(ofx::Clip clip, double time, const ofx::RectD* region,
                     ofx::PropertySet* image) {
    if (const ofx::Status status = Turn(); status != ofx::ok) return status;
    EXPECT_EQ(region, nullptr);
    if (clip->image == nullptr || time != frameTime) return ofx::failed;
    *image = &clip->image->properties;
    ++books.images;
    return ofx::ok;
}

ofx::Status GetValue(ofx::Parameter parameter, double time, ...) {
    if (const ofx::Status status = Turn(); status != ofx::ok) return status;
    std::va_list places;
    va_start(places, time);
    for (const double value : parameter->value) {
        const double now = time == frameTime ? value : 1;
        if (parameter->type == "OfxParamTypeRGB") {
            *va_arg(places, double*) = now;
        } else {
            *va_arg(places, int*) = static_cast<int>(now);
        }
    }
    va_end(places);
    return ofx::ok;
}

ofx::Status Tell(void*, const char* type, const char*, const char* format, ...) {
    EXPECT_STREQ(type, "OfxMessageError");
    EXPECT_STREQ(format, "%s");
    std::va_list texts;
    va_start(texts, format);
    books.messages.emplace_back(va_arg(texts, const char*));
    va_end(texts);
    return ofx::ok;
}

const ofx::PropertySuite properties = {nullptr,
                                       Set<std::string>,
                                       Set<double>,
                                       Set<int>,
                                       {},
                                       Get<void*>,
                                       Get<std::string, char*>,
                                       Get<double>,
                                       Get<int>,
                                       {},
                                       nullptr,
                                       nullptr};

const ofx::EffectSuite effects = {
    [](ofx::Effect effect, ofx::PropertySet* set) {
        *set = &effect->properties;
        return Turn();
    },
    [](ofx::Effect effect, ofx::ParameterSet* set) {
        *set = reinterpret_cast<ofx::ParameterSet>(effect);
        return Turn();
    },
    [](ofx::Effect effect, const char* clip, ofx::PropertySet* set) {
        *set = &effect->clips[clip].properties;
        return Turn();
    },
    [](ofx::Effect effect, const char* name, ofx::Clip* clip, ofx::PropertySet* set) {
        *clip = &effect->clips.at(name);
        if (set != nullptr) *set = &(*clip)->properties;
        return Turn();
    },
    nullptr,
    GetImage,
    [](ofx::PropertySet) {
        --books.images;
        return ofx::ok;
    },
    [](ofx::Clip clip, double time, ofx::RectD* region) {
        if (time == frameTime) *region = clip->region;
        return Turn();
    },
    [](ofx::Effect) { return books.abort; },
    [](ofx::Effect, std::size_t bytes, ofx::Memory* memory) {
        if (const ofx::Status status = Turn(); status != ofx::ok) return status;
        *memory = new ofx::MemoryRecord{std::malloc(bytes)};
        ++books.memory;
        return ofx::ok;
    },
    [](ofx::Memory memory) {
        std::free(memory->bytes);
        delete memory;
        --books.memory;
        return ofx::ok;
    },
    [](ofx::Memory memory, void** bytes) {
        if (const ofx::Status status = Turn(); status != ofx::ok) return status;
        *bytes = memory->bytes;
        ++books.locks;
        return ofx::ok;
    },
    [](ofx::Memory) {
        --books.locks;
        return ofx::ok;
    }};

const ofx::ParameterSuite parameters = {
    [](ofx::ParameterSet set, const char* type, const char* name, ofx::PropertySet* handle) {
        if (const ofx::Status status = Turn(); status != ofx::ok) return status;
        EffectOf(set).parameters.push_back({type, name, {}, {}});
        *handle = &EffectOf(set).parameters.back().properties;
        return ofx::ok;
    },
    [](ofx::ParameterSet set, const char* name, ofx::Parameter* handle, ofx::PropertySet*) {
        for (ofx::ParameterRecord& parameter : EffectOf(set).parameters) {
            if (parameter.name == name) *handle = &parameter;
        }
        return Turn();
    },
    nullptr,
    nullptr,
    nullptr,
    GetValue,
    {}};

const ofx::MessageSuite messages = {Tell};

const void* FetchSuite(ofx::PropertySet, const char* name, int version) {
    EXPECT_EQ(version, 1);
    const std::map<std::string, const void*> suites = {{"OfxPropertySuite", &properties},
                                                       {"OfxImageEffectSuite", &effects},
                                                       {"OfxParameterSuite", &parameters},
                                                       {"OfxMessageSuite", &messages}};
    return name == books.missingSuite ? nullptr : suites.at(name);
}

}  // namespace

ofx::Host testHost = {nullptr, FetchSuite};

std::string ofx::PropertySetRecord::text() const {
    std::ostringstream text;
    for (const auto& [name, all] : values) {
        if (name == "OfxParamPropHint" || name == "OfxPropPluginDescription") continue;
        text << name << '=';
        for (const Value& value : all) {
            if (&value != all.data()) text << ' ';
            std::visit([&](const auto& plain) { text << plain; }, value);
        }
        text << '\n';
    }
    return text.str();
}

LentImage::LentImage(Frame& picture, bool negativeRowBytes, int padding)
    : picture_(picture),
      rowsDown_(negativeRowBytes),
      stride_(picture.rowSize() + static_cast<std::size_t>(padding)),
      memory_(stride_ * static_cast<std::size_t>(picture.height()), noise) {
    for (int y = 0; y < picture.height(); ++y)
        std::memcpy(row(y), picture.pixels.data() + static_cast<std::size_t>(y) * picture.rowSize(),
                    picture.rowSize());
    const auto rowBytes = static_cast<int>(stride_);
    const ofx::RectI& b = picture.bounds;
    properties.values = {{"OfxImagePropData", {static_cast<void*>(row(picture.height() - 1))}},
                         {"OfxImagePropBounds", {b.x1, b.y1, b.x2, b.y2}},
                         {"OfxImagePropRowBytes", {rowsDown_ ? -rowBytes : rowBytes}},
                         {"OfxImageEffectPropPixelDepth", {picture.depth}},
                         {"OfxImageEffectPropComponents", {picture.components}},
                         {"OfxImageEffectPropPreMultiplication", {picture.premultiplication}}};
}

LentImage::~LentImage() {
    for (int y = 0; y < picture_.height(); ++y) {
        const std::byte* end = row(y) + picture_.rowSize();
        std::memcpy(picture_.pixels.data() + static_cast<std::size_t>(y) * picture_.rowSize(),
                    row(y), picture_.rowSize());
        for (const std::byte* gap = end; gap < row(y) + stride_; ++gap) EXPECT_EQ(*gap, noise);
    }
}

std::byte* LentImage::row(int fromTop) {
    const int index = rowsDown_ ? fromTop : picture_.height() - 1 - fromTop;
    return memory_.data() + static_cast<std::size_t>(index) * stride_;
}

void ofx::ParameterRecord::setToDefault() {
    const auto found = properties.values.find("OfxParamPropDefault");
    if (found == properties.values.end()) return;
    for (const PropertySetRecord::Value& given : found->second) {
        const int* whole = std::get_if<int>(&given);
        value.push_back(whole != nullptr ? *whole : std::get<double>(given));
    }
}

void ofx::EffectRecord::setValue(const std::string& name, const std::vector<double>& value) {
    for (ofx::ParameterRecord& parameter : parameters) {
        if (parameter.name == name) parameter.value = value;
    }
}
