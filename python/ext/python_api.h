// Python's C API as the module uses it: the limited API, so that one build serves every
// CPython from 3.10 on. Every file of the module includes this before anything else.
#pragma once

#define Py_LIMITED_API 0x030A0000
#define PY_SSIZE_T_CLEAN
#include <Python.h>
