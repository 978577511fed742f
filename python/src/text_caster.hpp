// Text between C++ and Python. Job files are bytes: what is not UTF-8 becomes lone surrogates in Python and the same bytes
// again on the way back.
#pragma once

#include <pybind11/pybind11.h>

#include <string>
#include <utility>
#include <vector>

namespace quor_python {

struct Text {
    std::string value;
};

inline std::vector<std::string> to_strings(std::vector<Text> texts) {
    std::vector<std::string> strings;
    strings.reserve(texts.size());
    for (Text& text : texts) {
        strings.push_back(std::move(text.value));
    }
    return strings;
}

inline pybind11::str to_python(const std::string& text) {
    PyObject* object = PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape");
    if (object == nullptr) {
        throw pybind11::error_already_set();
    }
    return pybind11::reinterpret_steal<pybind11::str>(object);
}

inline pybind11::list to_python(const std::vector<std::string>& texts) {
    pybind11::list list(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        list[i] = to_python(texts[i]);
    }
    return list;
}

/// Gives None for what is absent.
template <class Value>
pybind11::object to_python_or_none(const Value& value) {
    return value ? pybind11::object(to_python(*value)) : pybind11::object(pybind11::none());
}

}  // namespace quor_python

namespace pybind11::detail {

template <>
struct type_caster<quor_python::Text> {
    PYBIND11_TYPE_CASTER(quor_python::Text, const_name("str"));

    bool load(handle source, bool) {
        if (!PyUnicode_Check(source.ptr())) {
            return false;
        }
        const object bytes = reinterpret_steal<object>(PyUnicode_AsEncodedString(source.ptr(), "utf-8", "surrogateescape"));
        if (!bytes) {
            throw error_already_set();
        }
        value.value.assign(PyBytes_AS_STRING(bytes.ptr()), static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.ptr())));
        return true;
    }

    static handle cast(const quor_python::Text& text, return_value_policy, handle) {
        return quor_python::to_python(text.value).release();
    }
};

}  // namespace pybind11::detail
