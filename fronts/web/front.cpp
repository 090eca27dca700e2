// What the page asks for beside the C interface: where edges lie, and the module's texts.
#include <emscripten/emscripten.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

#include "capi/controls.h"
#include "capi/image_rows.h"
#include "kernel/kernels.h"
#include "nevrel.h"
#include "params/string_table.h"
#include "params/ui_language.h"
#include "windows_stand_in/windows_api.h"

// The page reads the records of the C interface as words.
static_assert(sizeof(nevrel_control) == 44 && sizeof(nevrel_settings) == 40);
static_assert(sizeof(nevrel_image) == 8);

namespace {

A_long uiLanguage = 0;

/// Where the marks of a pixel say that it differs from its neighbours.
enum Mark : std::uint8_t { MarkRight = 1, MarkBelow = 2 };

void MarkEdges(const EdgeMap& map, std::uint8_t* marks) {
    for (int y = 0; y < map.height(); ++y) {
        for (int x = 0; x < map.width(); ++x) {
            const int right = map.R(x, y) ? MarkRight : 0, below = map.D(x, y) ? MarkBelow : 0;
            *marks++ = static_cast<std::uint8_t>(right | below);
        }
    }
}

}  // namespace

// The language is the page's, and there is no code page that could stand in for it.
A_long UiLanguage() { return uiLanguage; }
int _getmbcp() { return 0; }  // NOLINT(bugprone-reserved-identifier): the runtime's name

extern "C" {

/// The text of a TextId, in code page 932 if in Japanese.
EMSCRIPTEN_KEEPALIVE const char* nevrel_web_text(int id, int japanese) {
    uiLanguage = japanese != 0 ? languageJapanese : 0;
    return LookupString(static_cast<TextId>(id));
}

/// Writes a byte of marks for each pixel of an RGBA image without gaps between its rows, as the
/// settings see its edges.
EMSCRIPTEN_KEEPALIVE nevrel_status nevrel_web_edges(const nevrel_settings* settings,
                                                    nevrel_sample sample, int32_t width,
                                                    int32_t height, void* pixels,
                                                    std::uint8_t* marks) {
    const Layout* layout = FindLayout(NEVREL_RGBA, sample);
    if (layout == nullptr) return NEVREL_BAD_ARGUMENT;
    EffectValues values{};
    const nevrel_status status = ReadSettings(settings, values);
    if (status != NEVREL_OK) return status;

    const auto pitch = std::ptrdiff_t{width} * layout->corePixelBytes;
    const auto imageBytes = static_cast<std::size_t>(pitch) * static_cast<std::size_t>(height);
    const std::unique_ptr<std::byte, decltype(&std::free)> memory(
        static_cast<std::byte*>(std::malloc(2 * imageBytes + ScratchBytes(width, height))),
        std::free);
    if (memory == nullptr) return NEVREL_OUT_OF_MEMORY;
    const ImageRows input({pixels, std::ptrdiff_t{width} * layout->pixelBytes}, height);
    const ImageRows before(memory.get(), pitch), after(memory.get() + imageBytes, pitch);
    for (int y = 0; y < height; ++y) layout->load(input.row(y), before.row(y), width);
    const Images images{before.first, pitch, after.first, pitch, width, height};
    CopyInput(layout->depth, values, images);
    auto* scratch = reinterpret_cast<std::uint8_t*>(memory.get() + 2 * imageBytes);
    MarkEdges(FindEdges(layout->depth, values, images, scratch), marks);
    return NEVREL_OK;
}
}
