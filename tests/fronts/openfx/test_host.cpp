#include "tests/fronts/openfx/test_host.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <sstream>
#include <stdexcept>

struct ofx::MemoryRecord {
    std::vector<std::byte> bytes;
};

Books books;

namespace {

/// A call that may fail does so when it is its turn.
ofx::Status Turn() {
    if (++books.calls != books.failingCall) return ofx::ok;
    if (books.failure == ofx::ok) throw books.calls;
    return books.failure;
}

/// The function as a call that may fail, and then does nothing.
template <auto function, typename... Arguments>
ofx::Status MayFail(Arguments... arguments) {
    const ofx::Status status = Turn();
    if (status == ofx::ok) function(arguments...);
    return status;
}

template <typename Value, typename Given = Value>
void Set(ofx::PropertySet set, const char* name, int index, Given given) {
    Values& values = set->values[name];
    const auto at = static_cast<std::size_t>(index);
    if (values.size() <= at) values.resize(at + 1);
    values[at] = Value(given);
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

void GetPropertySet(ofx::Effect effect, ofx::PropertySet* set) { *set = &effect->properties; }

void GetParamSet(ofx::Effect effect, ofx::ParameterSet* set) {
    *set = reinterpret_cast<ofx::ParameterSet>(effect);
}

void DefineClip(ofx::Effect effect, const char* name, ofx::PropertySet* set) {
    *set = &effect->clips[name].properties;
}

void GetClip(ofx::Effect effect, const char* name, ofx::Clip* clip, ofx::PropertySet* set) {
    *clip = &effect->clips.at(name);
    if (set != nullptr) *set = &(*clip)->properties;
}

ofx::Status GetImage(ofx::Clip clip, double time, const ofx::RectD* region,
                     ofx::PropertySet* image) {
    if (const ofx::Status status = Turn(); status != ofx::ok) return status;
    EXPECT_EQ(region, nullptr);
    if (clip->image == nullptr || time != frameTime) return ofx::failed;
    *image = &clip->image->properties;
    ++books.lent;
    return ofx::ok;
}

void GetRegion(ofx::Clip clip, double time, ofx::RectD* region) {
    if (time == frameTime) *region = clip->region;
}

template <typename Handle>
ofx::Status TakeBack(Handle /*lent*/) {
    --books.lent;
    return ofx::ok;
}

int Abort(ofx::Effect /*effect*/) { return books.abort; }

void Allocate(ofx::Effect /*effect*/, std::size_t bytes, ofx::Memory* memory) {
    *memory = new ofx::MemoryRecord{std::vector<std::byte>(bytes)};
    ++books.lent;
}

ofx::Status Free(ofx::Memory memory) {
    delete memory;
    return TakeBack(memory);
}

void Lock(ofx::Memory memory, void** bytes) {
    *bytes = memory->bytes.data();
    ++books.lent;
}

void DefineParameter(ofx::ParameterSet set, const char* type, const char* name,
                     ofx::PropertySet* properties) {
    EffectOf(set).parameters.push_back({type, name, {}, {}});
    *properties = &EffectOf(set).parameters.back().properties;
}

void GetParameter(ofx::ParameterSet set, const char* name, ofx::Parameter* parameter,
                  ofx::PropertySet* /*properties*/) {
    *parameter = &EffectOf(set).parameter(name);
}

ofx::Status GetValue(ofx::Parameter parameter, double time, ...) {
    if (const ofx::Status status = Turn(); status != ofx::ok) return status;
    std::va_list places;
    va_start(places, time);
    for (const auto& value : parameter->value) {
        if (const int* whole = std::get_if<int>(&value)) {
            *va_arg(places, int*) = time == frameTime ? *whole : 1;
        } else {
            *va_arg(places, double*) = time == frameTime ? std::get<double>(value) : 1;
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
                                       MayFail<Set<std::string, const char*>>,
                                       MayFail<Set<double>>,
                                       MayFail<Set<int>>,
                                       {},
                                       Get<void*>,
                                       Get<std::string, char*>,
                                       Get<double>,
                                       Get<int>,
                                       {},
                                       nullptr,
                                       nullptr};
const ofx::EffectSuite effects = {MayFail<GetPropertySet>,
                                  MayFail<GetParamSet>,
                                  MayFail<DefineClip>,
                                  MayFail<GetClip>,
                                  nullptr,
                                  GetImage,
                                  TakeBack<ofx::PropertySet>,
                                  MayFail<GetRegion>,
                                  Abort,
                                  MayFail<Allocate>,
                                  Free,
                                  MayFail<Lock>,
                                  TakeBack<ofx::Memory>};
const ofx::ParameterSuite parameters = {
    MayFail<DefineParameter>, MayFail<GetParameter>, nullptr, nullptr, nullptr, GetValue, {}};
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

std::string ofx::PropertySetRecord::text(const std::string& name) const {
    const auto found = values.find(name);
    if (found == values.end()) return "";
    std::ostringstream text;
    for (const auto& value : found->second) {
        if (&value != found->second.data()) text << ' ';
        std::visit([&](const auto& plain) { text << plain; }, value);
    }
    return text.str();
}

LentImage::LentImage(Frame& picture, const Layout& layout)
    : picture_(picture), image_(picture.rowSize(), picture.height(), layout) {
    image_.load(picture.pixels.data());
    const ofx::RectI& b = picture.bounds;
    void* bottomRow = image_.row(picture.height() - 1);
    properties.values = {{"OfxImagePropData", {bottomRow}},
                         {"OfxImagePropBounds", {b.x1, b.y1, b.x2, b.y2}},
                         {"OfxImagePropRowBytes", {static_cast<int>(-image_.pitch())}},
                         {"OfxImageEffectPropPixelDepth", {picture.depth}},
                         {"OfxImageEffectPropComponents", {picture.components}},
                         {"OfxImageEffectPropPreMultiplication", {picture.premultiplication}}};
}

LentImage::~LentImage() {
    image_.store(picture_.pixels.data());
    EXPECT_TRUE(image_.surroundingsIntact());
}

ofx::ParameterRecord& ofx::EffectRecord::parameter(const std::string& name) {
    for (ofx::ParameterRecord& parameter : parameters) {
        if (parameter.name == name) return parameter;
    }
    throw std::out_of_range(name);
}
