// SPDX-License-Identifier: Apache-2.0
#include "functions.h"

#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>

namespace ZantrelPython {

namespace py = pybind11;

namespace {

/// All functions are called through one of pybind11's, in whose place this one stands. It has nothing to say
/// where a call goes well, and so costs nothing then.
class Calls : public py::cpp_function {
public:
    static PyObject* Call(PyObject* self, PyObject* args, PyObject* named) {
        PyObject* const result = dispatcher(self, args, named);
        if (result == nullptr && PyErr_ExceptionMatches(PyExc_TypeError) != 0) {
            Reword(args, named);
        }
        return result;
    }

private:
    // Only what is TypeError itself: a subclass is somebody's own, raised by code that the call has run.
    // Python's code does the wording, since it is a matter of texts and is needed when something went wrong
    // already.
    static void Reword(PyObject* args, PyObject* named) {
        try {
            py::error_already_set error; // takes the exception, and would end it unseen
            PyObject* const value = error.value().ptr();
            if (value == nullptr || Py_TYPE(value) != reinterpret_cast<PyTypeObject*>(PyExc_TypeError)) {
                error.restore();
                return;
            }
            py::object const sentence = py::module_::import("zantrel._arguments").attr("sentence");
            py::dict const none;
            py::handle const given = named != nullptr ? py::handle(named) : py::handle(none);
            py::str const message(error.value());
            py::str const said = sentence(message, py::handle(args), given);
            if (said.equal(message)) {
                error.restore();
            } else {
                PyErr_SetObject(PyExc_TypeError, said.ptr());
            }
        } catch (py::error_already_set& failure) {
            failure.restore(); // as of a Ctrl-C
        } catch (std::exception const&) {
            PyErr_NoMemory(); // no exception may pass through Python's own frames
        }
    }
};

/// pybind11 wraps a method in what binds it to `self`. Null for what pybind11 hasn't made, as __hash__ =
/// None.
PyCFunctionObject* FunctionIn(PyObject* thing) {
    if (thing != nullptr && PyInstanceMethod_Check(thing)) {
        thing = PyInstanceMethod_Function(thing);
    }
    return thing != nullptr && PyCFunction_CheckExact(thing) ? reinterpret_cast<PyCFunctionObject*>(thing)
                                                             : nullptr;
}

/// Classes called as users know them.
std::string WithPublicNames(std::string forms) {
    constexpr std::string_view inner = "zantrel._zantrel.", outer = "zantrel.";
    for (std::size_t at = 0; (at = forms.find(inner, at)) != forms.npos; at += outer.size()) {
        forms.replace(at, inner.size(), outer);
    }
    return forms;
}

/// A function, a method or either side of a property.
void FinishFunction(py::handle thing, py::handle doc) {
    PyCFunctionObject* const function = FunctionIn(thing.ptr());
    if (function == nullptr || function->m_ml->ml_flags != (METH_VARARGS | METH_KEYWORDS)) {
        return;
    }
    PyMethodDef& def = *function->m_ml;
    def.ml_meth = reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(&Calls::Call));
    if (!doc.is_none()) {
        // Behind the forms, which pybind11 has put there and gives free with the function.
        std::string const forms = WithPublicNames(def.ml_doc != nullptr ? def.ml_doc : "");
        char* const kept = PYBIND11_COMPAT_STRDUP((forms + '\n' + py::cast<std::string>(doc)).c_str());
        if (kept != nullptr) {
            std::free(const_cast<char*>(def.ml_doc));
            def.ml_doc = kept;
        }
    }
}

// The functions of a property have no docstrings of their own: help() shows that of the property.
void FinishMember(py::handle member, py::handle doc) {
    if (PyObject_TypeCheck(member.ptr(), &PyProperty_Type) != 0) {
        FinishFunction(py::object(member.attr("fget")), py::none());
        FinishFunction(py::object(member.attr("fset")), py::none());
        member.attr("__doc__") = doc;
    } else {
        bool const isStatic = py::hasattr(member, "__func__");
        FinishFunction(
            isStatic ? py::object(member.attr("__func__")) : py::reinterpret_borrow<py::object>(member), doc);
    }
}

} // namespace

void FinishFunctions(py::module_& module) {
    py::object const docOf = py::module_::import("zantrel._docs").attr("doc_of");
    for (auto const& [name, thing] : py::dict(module.attr("__dict__"))) {
        py::object const doc = docOf(name, "");
        if (!PyType_Check(thing.ptr())) {
            FinishFunction(thing, doc);
            continue;
        }
        thing.attr("__doc__") = doc;
        for (auto const& [memberName, member] : py::dict(thing.attr("__dict__"))) {
            FinishMember(member, docOf(name, memberName));
        }
    }
}

} // namespace ZantrelPython
