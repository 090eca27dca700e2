// The effect as a Python module on arrays of numpy.
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <new>
#include <string>

#include "fronts/control_fields.h"
#include "nevrel.h"

namespace {

namespace py = pybind11;

std::string Repr(const py::handle& value) { return py::repr(value).cast<std::string>(); }

/// An integer as Python takes one for an index; TypeError for anything else.
std::int32_t Integer(const nevrel_control& control, const py::handle& value) {
    const auto index = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
    if (!index) throw py::error_already_set();
    int overflow = 0;
    const long long number = PyLong_AsLongLongAndOverflow(index.ptr(), &overflow);
    if (overflow != 0 || number < control.minimum || number > control.maximum) {
        throw py::value_error(std::string(control.key) + " must be from " +
                              std::to_string(control.minimum) + " to " +
                              std::to_string(control.maximum) + ", not " + Repr(value));
    }
    return static_cast<std::int32_t>(number);
}

void SetControl(const nevrel_control& control, const py::handle& value, nevrel_settings& settings) {
    std::int32_t* fields = FieldsOf(control, settings);
    if (control.kind == NEVREL_CHECKBOX) {
        fields[0] = py::bool_(py::reinterpret_borrow<py::object>(value)) ? 1 : 0;
    } else if (control.kind == NEVREL_COLOR) {
        const py::tuple channels(py::reinterpret_borrow<py::object>(value));
        if (channels.size() != 3) {
            throw py::value_error(std::string(control.key) + " must be red, green and blue, not " +
                                  Repr(value));
        }
        for (std::size_t i = 0; i < 3; ++i) fields[i] = Integer(control, channels[i]);
    } else {
        fields[0] = Integer(control, value);
    }
}

const nevrel_control* FindControl(const std::string& key) {
    for (std::size_t i = 0; i < nevrel_control_count(); ++i) {
        if (key == nevrel_control_at(i)->key) return nevrel_control_at(i);
    }
    return nullptr;
}

nevrel_settings ReadControls(const py::kwargs& controls) {
    nevrel_settings settings;
    nevrel_settings_init(&settings, sizeof settings);
    for (const auto& [name, value] : controls) {
        const nevrel_control* control = FindControl(name.cast<std::string>());
        if (control == nullptr) {
            throw py::type_error("smooth() got an unexpected keyword argument " + Repr(name));
        }
        SetControl(*control, value, settings);
    }
    return settings;
}

nevrel_sample SampleOf(const py::dtype& type) {
    if (type.attr("isnative").cast<bool>()) {
        if (type.kind() == 'u' && type.itemsize() == 1) return NEVREL_UINT8;
        if (type.kind() == 'u' && type.itemsize() == 2) return NEVREL_UINT16;
        if (type.kind() == 'f' && type.itemsize() == 2) return NEVREL_HALF;
        if (type.kind() == 'f' && type.itemsize() == 4) return NEVREL_FLOAT;
    }
    throw py::type_error(
        "smooth() takes uint8, uint16, float16 and float32 in the machine's "
        "byte order, not " +
        Repr(type));
}

/// Whether the C interface can address the pixels where they lie: packed in each row, aligned to
/// a sample, and no row in another.
bool IsAddressable(const py::array& array) {
    const py::ssize_t pixel = array.shape(2) * array.itemsize();
    const py::ssize_t stride = array.shape(0) == 1 ? PY_SSIZE_T_MAX : array.strides(0);
    return array.strides(2) == array.itemsize() &&
           (array.shape(1) == 1 || array.strides(1) == pixel) &&
           (stride < 0 ? -stride : stride) >= array.shape(1) * pixel &&
           array.attr("flags").attr("aligned").cast<bool>();
}

/// One picture with everything that is not to be asked of Python again.
struct Call {
    nevrel_settings settings;
    nevrel_sample sample;
    py::array input;

    /// Smooths into `output` of the same shape and type, without the lock of the interpreter.
    [[nodiscard]] nevrel_status into(const py::array& output) const {
        const nevrel_image in = {const_cast<void*>(input.data()), input.strides(0)};
        const nevrel_image out = {const_cast<void*>(output.data()), output.strides(0)};
        const auto width = static_cast<std::int32_t>(input.shape(1));
        const auto height = static_cast<std::int32_t>(input.shape(0));
        const nevrel_order order = input.shape(2) == 4 ? NEVREL_RGBA : NEVREL_RGB;
        const py::gil_scoped_release released;
        return nevrel_smooth(&settings, order, sample, width, height, &in, &out, nullptr);
    }
};

void Check(nevrel_status status) {
    if (status == NEVREL_OUT_OF_MEMORY) throw std::bad_alloc();  // MemoryError
    if (status != NEVREL_OK) throw py::value_error(nevrel_status_text(status));
}

void CheckInput(const py::array& array, const nevrel_settings& settings) {
    const bool isPicture = array.ndim() == 3 && (array.shape(2) == 3 || array.shape(2) == 4);
    if (!isPicture) {
        throw py::value_error("smooth() takes an array of shape (height, width, 3 or 4), not " +
                              Repr(array.attr("shape")));
    }
    if (array.shape(0) > NEVREL_LARGEST_SIDE || array.shape(1) > NEVREL_LARGEST_SIDE) {
        throw py::value_error(nevrel_status_text(NEVREL_BAD_SIZE));
    }
    if (settings.color_key_enable != 0 && array.shape(2) == 3) {
        throw py::value_error(
            "a color key needs an alpha channel: an array of shape "
            "(height, width, 4)");
    }
}

py::array CheckOutput(const py::object& out, const py::array& input) {
    if (!py::isinstance<py::array>(out)) {
        throw py::type_error("out must be an array, not " + Repr(out.get_type()));
    }
    auto array = py::reinterpret_borrow<py::array>(out);
    if (!array.dtype().equal(input.dtype())) {
        throw py::type_error("out must be " + Repr(input.dtype()) + " as the input is, not " +
                             Repr(array.dtype()));
    }
    if (!array.attr("shape").equal(input.attr("shape"))) {
        throw py::value_error("out must have the shape " + Repr(input.attr("shape")) +
                              " of the input, not " + Repr(array.attr("shape")));
    }
    if (!array.writeable()) throw py::value_error("out is read-only");
    return array;
}

py::array Smooth(const py::object& object, const py::object& out, const py::kwargs& controls) {
    auto array = py::array::ensure(object);
    if (!array) throw py::type_error("smooth() takes an array, not " + Repr(object.get_type()));
    Call call{ReadControls(controls), SampleOf(array.dtype()), array};
    CheckInput(array, call.settings);
    const py::object empty = py::module_::import("numpy").attr("empty");
    const auto fresh = [&] {
        return py::array(empty(call.input.attr("shape"), call.input.dtype()));
    };
    py::array output = out.is_none() ? fresh() : CheckOutput(out, call.input);
    if (output.size() == 0) return output;
    if (!IsAddressable(call.input)) {
        call.input = call.input.attr("copy")("C").cast<py::array>();
    }

    nevrel_status status = IsAddressable(output) ? call.into(output) : NEVREL_OVERLAP;
    if (status == NEVREL_OVERLAP) {
        const py::array whole = fresh();
        status = call.into(whole);
        if (status == NEVREL_OK) output[py::ellipsis()] = whole;
    }
    Check(status);
    return output;
}

std::string DefaultOf(const nevrel_control& control) {
    const std::int32_t* value = control.default_value;
    if (control.kind == NEVREL_CHECKBOX) return value[0] != 0 ? "True" : "False";
    if (control.kind == NEVREL_SLIDER) return std::to_string(value[0]);
    return "(" + std::to_string(value[0]) + ", " + std::to_string(value[1]) + ", " +
           std::to_string(value[2]) + ")";
}

/// The help of smooth(): its first line is the signature that Python's inspection reads.
std::string Help() {
    std::string signature = "smooth(array, *, out=None";
    std::string controls;
    for (std::size_t i = 0; i < nevrel_control_count(); ++i) {
        const nevrel_control& control = *nevrel_control_at(i);
        const std::string range =
            std::to_string(control.minimum) + " to " + std::to_string(control.maximum);
        const std::string type = control.kind == NEVREL_CHECKBOX ? "bool"
                                 : control.kind == NEVREL_COLOR  ? "three ints, " + range
                                                                 : "int, " + range;
        signature += std::string(", ") + control.key + "=" + DefaultOf(control);
        controls += std::string(control.key) + " : " + type + "\n    " + control.description + "\n";
    }
    return signature + ")\n--\n\n" + R"(Smooths the stair-stepped edges of a picture.

Samples that the effect leaves alone come back bit for bit. Releases the interpreter's lock, so
threads smooth several pictures at once.

Parameters
----------
array : array of uint8, uint16, float16 or float32, shape (height, width, 3 or 4)
    Rows from the top; red, green, blue and, with four channels, straight (not premultiplied)
    alpha. Full intensity is 255, 65535 or 1.0. Any strides: rows may be padded or run upwards and
    are read where they lie; pixels that are not packed in their row are gathered in a copy.
out : array of the same shape and type, optional
    Filled and returned, in place of a new array. It may be `array` itself or overlap it.
)" + controls +
           R"(
Returns
-------
array of the same shape and type

The controls are on the scale of 8 bits at every type. The color key needs four channels.

Raises
------
TypeError
    Another type of samples, an unknown control, a control that is no integer.
ValueError
    Another shape, a control outside its range, a color key without alpha, `out` of another shape
    or read-only.
MemoryError
    The scratch memory cannot be had.
)";
}

}  // namespace

PYBIND11_MODULE(_core, module) {
    py::options options;
    options.disable_function_signatures();
    module.attr("__version__") = nevrel_version();
    module.def("smooth", &Smooth, py::arg("array"), py::kw_only(), py::arg("out") = py::none(),
               Help().c_str());
}
