// The effect as a frei0r filter, for ffmpeg, MLT (melt, Kdenlive, Shotcut) and GStreamer.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <new>

#include "fronts/control_fields.h"
#include "fronts/frei0r/frei0r_interface.h"
#include "nevrel.h"

namespace {

/// Rendering only reads it: some hosts render parts of a frame through one instance at once.
struct Instance {
    nevrel_settings settings;
    std::int32_t width;
    std::int32_t height;
};

Instance& InstanceOf(Frei0rInstance instance) { return *static_cast<Instance*>(instance); }

int TypeOf(nevrel_control_kind kind) {
    if (kind == NEVREL_COLOR) return frei0rColor;
    return kind == NEVREL_CHECKBOX ? frei0rBool : frei0rDouble;
}

/// The value of a control that stands `share` of the way from its minimum to its maximum.
std::int32_t FromShare(const nevrel_control& control, double share) {
    const double limited = share > 0 ? std::fmin(share, 1) : 0;  // not a number becomes 0
    return control.minimum +
           static_cast<std::int32_t>(std::lround(limited * (control.maximum - control.minimum)));
}

double ToShare(const nevrel_control& control, std::int32_t value) {
    return static_cast<double>(value - control.minimum) / (control.maximum - control.minimum);
}

const nevrel_control* ControlAt(int index) {
    return index < 0 ? nullptr : nevrel_control_at(static_cast<std::size_t>(index));
}

}  // namespace

int f0r_init() { return 1; }

void f0r_deinit() {}

void f0r_get_plugin_info(Frei0rPluginInfo* info) {
    *info = {.name = "nevrel",
             .author = NEVREL_AUTHORS,
             .pluginType = frei0rFilter,
             .colorModel = frei0rRgba8888,
             .frei0rVersion = frei0rMajorVersion,
             .majorVersion = NEVREL_VERSION_MAJOR,
             .minorVersion = NEVREL_VERSION_MINOR,
             .parameterCount = static_cast<int>(nevrel_control_count()),
             .explanation = "Smooths the stair-stepped edges of cels and line art"};
}

void f0r_get_param_info(Frei0rParameterInfo* info, int index) {
    const nevrel_control* control = ControlAt(index);
    if (control == nullptr) return;
    *info = {
        .name = control->name, .type = TypeOf(control->kind), .explanation = control->description};
}

Frei0rInstance f0r_construct(unsigned width, unsigned height) {
    if (width == 0 || width > NEVREL_LARGEST_SIDE || height == 0 || height > NEVREL_LARGEST_SIDE) {
        return nullptr;
    }
    nevrel_settings settings;
    nevrel_settings_init(&settings, sizeof settings);
    return new (std::nothrow)
        Instance{settings, static_cast<std::int32_t>(width), static_cast<std::int32_t>(height)};
}

void f0r_destruct(Frei0rInstance instance) { delete static_cast<Instance*>(instance); }

void f0r_set_param_value(Frei0rInstance instance, void* value, int index) {
    const nevrel_control* control = ControlAt(index);
    if (control == nullptr) return;
    std::int32_t* fields = FieldsOf(*control, InstanceOf(instance).settings);
    if (control->kind == NEVREL_COLOR) {
        const auto& color = *static_cast<const Frei0rColor*>(value);
        fields[0] = FromShare(*control, color.red);
        fields[1] = FromShare(*control, color.green);
        fields[2] = FromShare(*control, color.blue);
    } else {
        fields[0] = FromShare(*control, *static_cast<const double*>(value));
    }
}

void f0r_get_param_value(Frei0rInstance instance, void* value, int index) {
    const nevrel_control* control = ControlAt(index);
    if (control == nullptr) return;
    const std::int32_t* fields = FieldsOf(*control, InstanceOf(instance).settings);
    if (control->kind == NEVREL_COLOR) {
        *static_cast<Frei0rColor*>(value) = {static_cast<float>(ToShare(*control, fields[0])),
                                             static_cast<float>(ToShare(*control, fields[1])),
                                             static_cast<float>(ToShare(*control, fields[2]))};
    } else {
        *static_cast<double*>(value) = ToShare(*control, fields[0]);
    }
}

void f0r_update(Frei0rInstance instance, double /*time*/, const std::uint32_t* input,
                std::uint32_t* output) {
    const Instance& self = InstanceOf(instance);
    const std::ptrdiff_t rowBytes = std::ptrdiff_t{self.width} * 4;
    const nevrel_image in = {const_cast<std::uint32_t*>(input), rowBytes};
    const nevrel_image out = {output, rowBytes};
    const nevrel_status status = nevrel_smooth(&self.settings, NEVREL_RGBA, NEVREL_UINT8,
                                               self.width, self.height, &in, &out, nullptr);
    if (status == NEVREL_OK) return;
    // The interface has no errors: the frame goes on as it came, and the host's log tells.
    std::memmove(output, input,
                 static_cast<std::size_t>(rowBytes) * static_cast<std::size_t>(self.height));
    std::fprintf(stderr, "nevrel: a frame is not smoothed: %s\n", nevrel_status_text(status));
}
