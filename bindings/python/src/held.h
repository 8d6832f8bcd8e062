// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pybind11/pybind11.h>

#include <memory>
#include <utility>

namespace ZantrelPython {

/// What a function takes that Python holds: never null, whatever is passed, `self` among it. None is no such
/// object, and neither is one that __new__ alone has made.
template <class T> struct Held {
    std::shared_ptr<T> pointer;

    Held() = default;
    template <class Other> Held(std::shared_ptr<Other> other) : pointer(std::move(other)) {}
    operator std::shared_ptr<T> const&() const { return pointer; }
    T& operator*() const { return *pointer; }
    T* operator->() const { return pointer.get(); }
    bool operator==(Held const& other) const { return pointer == other.pointer; }
};

} // namespace ZantrelPython

namespace PYBIND11_NAMESPACE {
namespace detail {

template <class T> struct type_caster<ZantrelPython::Held<T>> {
    PYBIND11_TYPE_CASTER(ZantrelPython::Held<T>, make_caster<std::shared_ptr<T>>::name);

    bool load(handle source, bool convert) {
        make_caster<std::shared_ptr<T>> inner;
        if (source.is_none() || !inner.load(source, convert)) {
            return false;
        }
        value.pointer = cast_op<std::shared_ptr<T>>(inner);
        return value.pointer != nullptr;
    }
    static handle cast(ZantrelPython::Held<T> const& held, return_value_policy policy, handle parent) {
        return make_caster<std::shared_ptr<T>>::cast(held.pointer, policy, parent);
    }
};

} // namespace detail
} // namespace PYBIND11_NAMESPACE
