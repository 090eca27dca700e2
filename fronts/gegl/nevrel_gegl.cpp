// The effect as the GEGL operation nevrel:smooth, for GIMP and the command gegl.
#include <gegl-plugin.h>
#include <gegl.h>
#include <gmodule.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "fronts/control_fields.h"
#include "nevrel.h"

extern "C" {
G_MODULE_EXPORT const GeglModuleInfo* gegl_module_query(GTypeModule* module);
G_MODULE_EXPORT gboolean gegl_module_register(GTypeModule* module);
}

namespace {

/// Colours are attached to the object, since their samples depend on the colour space of the
/// picture.
struct Operation {
    GeglOperationFilter parent;
    nevrel_settings settings;
};

struct OperationClass {
    GeglOperationFilterClass parent;
};

nevrel_settings& SettingsOf(void* object) { return static_cast<Operation*>(object)->settings; }

/// Properties are numbered from 1 on.
const nevrel_control* ControlOf(guint propertyId) { return nevrel_control_at(propertyId - 1); }

void SetProperty(GObject* object, guint id, const GValue* value, GParamSpec* spec) {
    const nevrel_control* control = ControlOf(id);
    if (control == nullptr) {
        G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, spec);
    } else if (control->kind == NEVREL_COLOR) {
        g_object_set_data_full(object, control->key, g_value_dup_object(value), g_object_unref);
    } else {
        *FieldsOf(*control, SettingsOf(object)) =
            control->kind == NEVREL_CHECKBOX ? g_value_get_boolean(value) : g_value_get_int(value);
    }
}

void GetProperty(GObject* object, guint id, GValue* value, GParamSpec* spec) {
    const nevrel_control* control = ControlOf(id);
    if (control == nullptr) {
        G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, spec);
    } else if (control->kind == NEVREL_COLOR) {
        g_value_set_object(value, g_object_get_data(object, control->key));
    } else if (control->kind == NEVREL_CHECKBOX) {
        g_value_set_boolean(value, *FieldsOf(*control, SettingsOf(object)));
    } else {
        g_value_set_int(value, *FieldsOf(*control, SettingsOf(object)));
    }
}

std::string PropertyName(const nevrel_control& control) {
    std::string name = control.key;
    std::replace(name.begin(), name.end(), '_', '-');
    return name;
}

GParamSpec* SpecOf(const nevrel_control& control) {
    constexpr auto flags =
        static_cast<GParamFlags>(G_PARAM_READWRITE | G_PARAM_CONSTRUCT | GEGL_PARAM_PAD_INPUT);
    const std::string name = PropertyName(control);
    const std::int32_t* value = control.default_value;
    if (control.kind == NEVREL_CHECKBOX) {
        return g_param_spec_boolean(name.c_str(), control.name, control.description, value[0],
                                    flags);
    }
    if (control.kind == NEVREL_COLOR) {
        char* color =
            g_strdup_printf("#%02x%02x%02x", static_cast<unsigned>(value[0]),
                            static_cast<unsigned>(value[1]), static_cast<unsigned>(value[2]));
        GParamSpec* spec = gegl_param_spec_color_from_string(name.c_str(), control.name,
                                                             control.description, color, flags);
        g_free(color);
        return spec;
    }
    GParamSpec* spec = gegl_param_spec_int(name.c_str(), control.name, control.description,
                                           control.minimum, control.maximum, value[0],
                                           control.minimum, control.maximum, 1.0, flags);
    gegl_param_spec_int_set_steps(GEGL_PARAM_SPEC_INT(spec), 1, 10);
    return spec;
}

/// The first control of the key group switches the others, which a dialog shows as insensitive.
void InstallProperties(GObjectClass* objectClass) {
    std::string keySwitch;
    for (guint id = 1; ControlOf(id) != nullptr; ++id) {
        const nevrel_control& control = *ControlOf(id);
        GParamSpec* spec = SpecOf(control);
        if (control.in_key_group != 0) {
            if (keySwitch.empty()) {
                keySwitch = PropertyName(control);
            } else {
                gegl_param_spec_set_property_key(spec, "sensitive", keySwitch.c_str());
            }
        }
        g_object_class_install_property(objectClass, id, spec);
    }
}

/// Pixels as they go through the core.
struct PixelFormat {
    const char* sampleName;
    const char* name;
    nevrel_sample sample;
};

constexpr PixelFormat floatFormat = {"float", "R'G'B'A float", NEVREL_FLOAT};
constexpr PixelFormat integerFormats[] = {{"u8", "R'G'B'A u8", NEVREL_UINT8},
                                          {"u16", "R'G'B'A u16", NEVREL_UINT16}};

/// The format that takes the samples of `source` as they are. Linear and premultiplied integers
/// would lose values on their way to others.
const PixelFormat& FormatFor(const Babl* source) {
    if (source == nullptr) return floatFormat;
    const BablModelFlag model = babl_get_model_flags(babl_format_get_model(source));
    if ((model & BABL_MODEL_FLAG_NONLINEAR) == 0 || (model & BABL_MODEL_FLAG_ASSOCIATED) != 0) {
        return floatFormat;
    }
    const std::string_view sample = babl_get_name(babl_format_get_type(source, 0));
    for (const PixelFormat& format : integerFormats) {
        if (sample == format.sampleName) return format;
    }
    return floatFormat;
}

void Prepare(GeglOperation* operation) {
    const PixelFormat& pixels = FormatFor(gegl_operation_get_source_format(operation, "input"));
    const Babl* space = gegl_operation_get_source_space(operation, "input");
    const Babl* format = babl_format_with_space(pixels.name, space);
    gegl_operation_set_format(operation, "input", format);
    gegl_operation_set_format(operation, "output", format);
}

/// The whole picture: what becomes of a pixel depends on edges of any length. Of a picture without
/// bounds the part that is asked for.
GeglRectangle WholePicture(GeglOperation* operation, const GeglRectangle* region) {
    const GeglRectangle* bounds = gegl_operation_source_get_bounding_box(operation, "input");
    return bounds == nullptr || gegl_rectangle_is_infinite_plane(bounds) ? *region : *bounds;
}

GeglRectangle GetRequiredForOutput(GeglOperation* operation, const gchar* /*pad*/,
                                   const GeglRectangle* region) {
    return WholePicture(operation, region);
}

/// The settings with the colours as samples of the picture's colour space.
nevrel_settings SettingsFor(GeglOperation* operation, const Babl* space) {
    nevrel_settings settings = SettingsOf(operation);
    for (guint id = 1; ControlOf(id) != nullptr; ++id) {
        const nevrel_control& control = *ControlOf(id);
        void* color = g_object_get_data(G_OBJECT(operation), control.key);
        if (control.kind != NEVREL_COLOR || color == nullptr) continue;
        guint8 samples[3];
        gegl_color_get_pixel(GEGL_COLOR(color), babl_format_with_space("R'G'B' u8", space),
                             samples);
        std::copy_n(samples, 3, FieldsOf(control, settings));
    }
    return settings;
}

/// The host shows it until all rows are done.
int ShowProgress(void* operation, std::int32_t rowsDone, std::int32_t rows) {
    char noText[] = "";
    gegl_operation_progress(static_cast<GeglOperation*>(operation),
                            static_cast<double>(rowsDone) / rows, noText);
    return 0;
}

gboolean Process(GeglOperation* operation, GeglBuffer* input, GeglBuffer* output,
                 const GeglRectangle* region, gint /*level*/) {
    const Babl* format = gegl_operation_get_format(operation, "output");
    const nevrel_settings settings = SettingsFor(operation, babl_format_get_space(format));
    const auto rowBytes = std::ptrdiff_t{region->width} * babl_format_get_bytes_per_pixel(format);
    void* pixels = g_try_malloc_n(static_cast<gsize>(region->height), static_cast<gsize>(rowBytes));
    nevrel_status status = NEVREL_OUT_OF_MEMORY;
    if (pixels != nullptr) {
        gegl_buffer_get(input, region, 1.0, format, pixels, GEGL_AUTO_ROWSTRIDE, GEGL_ABYSS_NONE);
        const nevrel_image image = {pixels, rowBytes};
        const nevrel_callbacks callbacks = {operation, nullptr, nullptr, &ShowProgress};
        status = nevrel_smooth(&settings, NEVREL_RGBA, FormatFor(format).sample, region->width,
                               region->height, &image, &image, &callbacks);
        if (status == NEVREL_OK) {
            gegl_buffer_set(output, region, 0, format, pixels, GEGL_AUTO_ROWSTRIDE);
        }
        g_free(pixels);
        ShowProgress(operation, region->height, region->height);
    }
    if (status != NEVREL_OK) g_warning("nevrel:smooth: %s", nevrel_status_text(status));
    return status == NEVREL_OK;
}

void InitializeClass(void* untypedClass, void* /*data*/) {
    auto* objectClass = static_cast<GObjectClass*>(untypedClass);
    objectClass->set_property = SetProperty;
    objectClass->get_property = GetProperty;
    InstallProperties(objectClass);

    auto* operationClass = static_cast<GeglOperationClass*>(untypedClass);
    operationClass->prepare = Prepare;
    operationClass->get_required_for_output = GetRequiredForOutput;
    operationClass->get_cached_region = WholePicture;
    operationClass->get_invalidated_by_change = GetRequiredForOutput;
    operationClass->threaded = FALSE;
    static_cast<GeglOperationFilterClass*>(untypedClass)->process = Process;
    gegl_operation_class_set_keys(operationClass, "name", "nevrel:smooth", "title",
                                  "Smooth Stair-stepped Edges", "categories", "enhance",
                                  "description",
                                  "Smooths the stair-stepped edges of cels and line art, and "
                                  "leaves everything else as it was",
                                  nullptr);
}

void InitializeInstance(GTypeInstance* instance, void* /*class*/) {
    nevrel_settings_init(&SettingsOf(instance), sizeof(nevrel_settings));
}

}  // namespace

const GeglModuleInfo* gegl_module_query(GTypeModule* /*module*/) {
    static constexpr GeglModuleInfo info = {GEGL_MODULE_ABI_VERSION};
    return &info;
}

gboolean gegl_module_register(GTypeModule* module) {
    constexpr GTypeInfo type = {sizeof(OperationClass),
                                nullptr,
                                nullptr,
                                InitializeClass,
                                nullptr,
                                nullptr,
                                sizeof(Operation),
                                0,
                                InitializeInstance,
                                nullptr};
    return g_type_module_register_type(module, GEGL_TYPE_OPERATION_FILTER, "NevrelSmooth", &type,
                                       GTypeFlags{}) != 0;
}
