#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "capi/controls.h"
#include "capi/image_rows.h"
#include "capi/layouts.h"
#include "kernel/kernels.h"
#include "nevrel.h"

namespace {

/// Memory of the caller's allocator or malloc's, given back at the end.
class Memory {
  public:
    Memory(const nevrel_callbacks& callbacks, std::size_t bytes)
        : callbacks_(callbacks),
          bytes_(static_cast<std::byte*>(callbacks.allocate != nullptr
                                             ? callbacks.allocate(callbacks.context, bytes)
                                             : std::malloc(bytes))) {}
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;
    ~Memory() {
        if (bytes_ == nullptr) return;
        if (callbacks_.release != nullptr) {
            callbacks_.release(callbacks_.context, bytes_);
        } else {
            std::free(bytes_);
        }
    }

    [[nodiscard]] std::byte* bytes() const { return bytes_; }

  private:
    const nevrel_callbacks& callbacks_;
    std::byte* bytes_;
};

/// One image on its way through the core, with nothing left to be found wrong but its memory.
class Smoothing {
  public:
    Smoothing(const Layout& layout, const EffectValues& values, int width, int height,
              const nevrel_image& input, const nevrel_image& output,
              const nevrel_callbacks& callbacks)
        : layout_(layout),
          values_(values),
          width_(width),
          height_(height),
          input_(input, height),
          output_(output, height),
          callbacks_(callbacks),
          loads_(!layout.isCores || AreSame(input, output, height)) {}

    nevrel_status run() const {
        const std::uint64_t copies = (loads_ ? 1U : 0U) + (storesChanged() ? 1U : 0U);
        if (copies * copyBytes() + mapBytesAtMost() > PTRDIFF_MAX) return NEVREL_OUT_OF_MEMORY;
        const auto bytes = static_cast<std::size_t>(copies * copyBytes());
        const Memory memory(callbacks_, bytes + ScratchBytes(width_, height_));
        if (memory.bytes() == nullptr) return NEVREL_OUT_OF_MEMORY;
        if (!goOn(0)) return NEVREL_CANCELLED;
        return smoothWith(memory.bytes()) ? NEVREL_OK : NEVREL_CANCELLED;
    }

  private:
    [[nodiscard]] bool storesChanged() const { return !layout_.hasCoresChannels; }

    [[nodiscard]] std::int64_t copyPitch() const {
        return std::int64_t{width_} * layout_.corePixelBytes;
    }
    // In 64 bits on every machine: sides up to NEVREL_LARGEST_SIDE do not exhaust them.
    [[nodiscard]] std::uint64_t copyBytes() const {
        return static_cast<std::uint64_t>(copyPitch()) * static_cast<std::uint64_t>(height_);
    }
    [[nodiscard]] std::uint64_t mapBytesAtMost() const {
        return (static_cast<std::uint64_t>(width_) + 8) * (static_cast<std::uint64_t>(height_) + 2);
    }

    [[nodiscard]] bool goOn(int rowsDone) const {
        return callbacks_.progress == nullptr ||
               callbacks_.progress(callbacks_.context, rowsDone, height_) == 0;
    }

    // The copies come first in the memory: a pixel needs more alignment than a byte of the map.
    bool smoothWith(std::byte* memory) const {
        ImageRows before = input_;
        ImageRows after = output_;
        for (auto [copied, rows] :
             {std::pair{loads_, &before}, std::pair{storesChanged(), &after}}) {
            if (!copied) continue;
            *rows = ImageRows(memory, static_cast<std::ptrdiff_t>(copyPitch()));
            memory += copyBytes();
        }
        if (loads_) load(before);
        const Images images{before.first, before.pitch, after.first, after.pitch, width_, height_};
        if (!runCore(images, reinterpret_cast<std::uint8_t*>(memory))) return false;
        if (!layout_.isCores) store(before, after);
        return true;
    }

    void load(const ImageRows& before) const {
        for (int y = 0; y < height_; ++y) layout_.load(input_.row(y), before.row(y), width_);
    }

    [[nodiscard]] bool runCore(const Images& images, std::uint8_t* map) const {
        Progress progress;
        if (callbacks_.progress != nullptr) {
            progress.goOn = [](void* smoothing, int rowsDone) {
                return static_cast<const Smoothing*>(smoothing)->goOn(rowsDone);
            };
            progress.context = const_cast<Smoothing*>(this);
        }
        CopyInput(layout_.depth, values_, images);
        return SmoothCopy(layout_.depth, values_, images, map, FastestForms(), progress);
    }

    void store(const ImageRows& before, const ImageRows& after) const {
        for (int y = 0; y < height_; ++y)
            layout_.store(input_.row(y), before.row(y), after.row(y), output_.row(y), width_);
    }

    const Layout& layout_;
    const EffectValues& values_;
    int width_;
    int height_;
    ImageRows input_;
    ImageRows output_;
    const nevrel_callbacks& callbacks_;
    bool loads_;  // whether the core reads a copy: of other pixels, or since it needs two images
};

#define NEVREL_TEXT(number) #number
#define NEVREL_TEXT_OF(macro) NEVREL_TEXT(macro)
constexpr char version[] = NEVREL_TEXT_OF(NEVREL_VERSION_MAJOR) "." NEVREL_TEXT_OF(
    NEVREL_VERSION_MINOR) "." NEVREL_TEXT_OF(NEVREL_VERSION_PATCH);
static_assert(std::string_view(version) == NEVREL_PROJECT_VERSION);

}  // namespace

nevrel_status nevrel_smooth(const nevrel_settings* settings, nevrel_order order,
                            nevrel_sample sample, int32_t width, int32_t height,
                            const nevrel_image* input, const nevrel_image* output,
                            const nevrel_callbacks* callbacks) {
    const auto isMissing = [](const nevrel_image* image) {
        return image == nullptr || image->pixels == nullptr;
    };
    constexpr nevrel_callbacks none{};
    const nevrel_callbacks& calls = callbacks == nullptr ? none : *callbacks;
    const Layout* layout = FindLayout(order, sample);
    if (isMissing(input) || isMissing(output) || layout == nullptr ||
        (calls.allocate == nullptr) != (calls.release == nullptr))
        return NEVREL_BAD_ARGUMENT;

    EffectValues values{};
    nevrel_status status = ReadSettings(settings, values);
    if (status != NEVREL_OK) return status;
    if (values.colorKeyEnable != 0 && !layout->hasAlpha) return NEVREL_BAD_ARGUMENT;
    status = CheckImages(*layout, width, height, *input, *output);
    if (status != NEVREL_OK) return status;
    return Smoothing(*layout, values, width, height, *input, *output, calls).run();
}

const char* nevrel_status_text(nevrel_status status) {
    switch (status) {
        case NEVREL_OK:
            return "done";
        case NEVREL_BAD_ARGUMENT:
            return "an argument is missing, unknown or does not go with the others";
        case NEVREL_BAD_SIZE:
            return "the image is empty or too large";
        case NEVREL_BAD_STRIDE:
            return "the rows of the image overlap or are not aligned";
        case NEVREL_BAD_SETTING:
            return "a control is outside its range";
        case NEVREL_OVERLAP:
            return "input and output overlap";
        case NEVREL_OUT_OF_MEMORY:
            return "not enough memory";
        case NEVREL_CANCELLED:
            return "cancelled";
        default:
            return "unknown status";
    }
}

const char* nevrel_version() { return version; }
