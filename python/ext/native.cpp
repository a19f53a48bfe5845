// orvane_parser._native: a parser handle as a Python object, and one call that parses an
// input and hands back the library's whole result, so that a document costs one crossing
// into native code however many answers it has. The result comes as the library's JSON
// text (for the command line) or read straight into the Document's attributes.
#include "python_api.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "api/java_fields.h"
#include "orvane_parser.h"
#include "result_reader.h"

namespace {

using orvane_python::ReadOutcome;
using orvane_python::Schema;

// Big enough for the result of any bundled sample, so that most handles never grow it.
constexpr int kFirstJsonRoom = 16384;
// Room kept behind the result for the member the symbol check adds.
constexpr int kSymbolRoom = 64;

struct HandleObject {
    PyObject_HEAD
    SVT_ParserHandle* handle;  // null once closed
    PyThread_type_lock lock;   // one parse at a time: the handle is not thread-safe
    char* json;                // the last result, reused and grown as needed
    char* scratch;             // as large: where the reader unescapes strings
    int jsonCapacity;
    Schema schema;
};

HandleObject* asHandle(PyObject* self) { return reinterpret_cast<HandleObject*>(self); }

struct Symbol {
    bool given;
    int columns;
    int rows;
    int level;
};

struct ParseRun {
    int status;
    int length;  // of the JSON text in the handle's buffer
    bool outOfMemory;
};

// Makes both buffers hold at least needed bytes; false when memory is exhausted.
bool growBuffers(HandleObject* h, long long needed) {
    if (needed <= h->jsonCapacity) return true;
    if (needed > INT_MAX) return false;
    long long capacity = static_cast<long long>(h->jsonCapacity) * 2;
    if (capacity < needed) capacity = needed;
    if (capacity > INT_MAX) capacity = INT_MAX;
    char* json = static_cast<char*>(std::realloc(h->json, static_cast<size_t>(capacity)));
    if (json == nullptr) return false;
    h->json = json;
    char* scratch = static_cast<char*>(std::realloc(h->scratch, static_cast<size_t>(capacity)));
    if (scratch == nullptr) return false;
    h->scratch = scratch;
    h->jsonCapacity = static_cast<int>(capacity);
    return true;
}

const char* checkWord(int status) {
    switch (status) {
        case SVT_CHECK_VALID: return "valid";
        case SVT_CHECK_INVALID: return "invalid";
        default: return "not checkable";
    }
}

// The object the library writes for a parse that left nothing to answer from.
void writeStatusOnly(HandleObject* h, ParseRun* run) {
    run->length = std::snprintf(h->json, static_cast<size_t>(h->jsonCapacity), "{\"status\":%d}", run->status);
}

// Parses and fetches the result; runs without the GIL, under the handle's lock.
ParseRun runParse(HandleObject* h, const char* data, int size, bool strict, const Symbol& symbol) {
    ParseRun run{SVT_ERR_EMPTY_INPUT, 0, false};
    if (size == 0) {
        // As the command-line tool answers an empty file: the library would say -21.
        writeStatusOnly(h, &run);
        return run;
    }
    run.status = strict ? SVT_parse(h->handle, data, size) : SVT_parseLenient(h->handle, data, size);
    int result = SVT_getResultJson(h->handle, h->json, h->jsonCapacity, &run.length);
    if (result == SVT_ERR_NO_ANSWER && run.length >= h->jsonCapacity) {
        if (run.length == INT_MAX || !growBuffers(h, static_cast<long long>(run.length) + 1 + kSymbolRoom)) {
            run.outOfMemory = true;
            return run;
        }
        result = SVT_getResultJson(h->handle, h->json, h->jsonCapacity, &run.length);
    }
    if (result != SVT_OK) {
        // No record to write from, e.g. after a parse that found no memory for its buffers.
        writeStatusOnly(h, &run);
        return run;
    }
    if (run.status != SVT_OK || !symbol.given) return run;
    int verdict = 0;
    const int checked = SVT_validateBarcode(h->handle, symbol.columns, symbol.rows, symbol.level, &verdict);
    // The member orvane-parse --symbol adds, in the same place (last) and with the same words.
    if (!growBuffers(h, static_cast<long long>(run.length) + kSymbolRoom)) {
        run.outOfMemory = true;
        return run;
    }
    const int added = std::snprintf(h->json + run.length - 1, static_cast<size_t>(h->jsonCapacity - run.length + 1),
                                    ",\"barcodeValidationStatus\":\"%s\"}",
                                    checked == SVT_OK ? checkWord(verdict) : "symbol out of range");
    run.length += added - 1;
    return run;
}

void lockHandle(HandleObject* h) {
    if (PyThread_acquire_lock(h->lock, NOWAIT_LOCK)) return;
    Py_BEGIN_ALLOW_THREADS
    PyThread_acquire_lock(h->lock, WAIT_LOCK);
    Py_END_ALLOW_THREADS
}

bool readSymbol(PyObject* object, Symbol* symbol) {
    if (object == Py_None) return true;
    if (!PyTuple_Check(object)) {
        PyErr_SetString(PyExc_TypeError, "symbol must be a tuple (columns, rows, level) or None");
        return false;
    }
    if (!PyArg_ParseTuple(object, "iii:symbol", &symbol->columns, &symbol->rows, &symbol->level)) return false;
    symbol->given = true;
    return true;
}

// What the result is handed back as.
enum class Answer { kJsonText, kValues };

// Parses under the handle's lock and answers (status, result): the JSON text, or the dict
// of the Document's attributes (the JSON text when the reader leaves it to Python).
PyObject* parseAndAnswer(PyObject* self, PyObject* args, Answer answer) {
    PyObject* data = nullptr;
    int strict = 0;
    PyObject* symbolObject = Py_None;
    if (!PyArg_ParseTuple(args, "Sp|O:parse", &data, &strict, &symbolObject)) return nullptr;
    Symbol symbol{false, 0, 0, 0};
    if (!readSymbol(symbolObject, &symbol)) return nullptr;
    char* bytes = nullptr;
    Py_ssize_t size = 0;
    if (PyBytes_AsStringAndSize(data, &bytes, &size) != 0) return nullptr;
    if (size > INT_MAX) {
        PyErr_SetString(PyExc_ValueError, "input longer than 2147483647 bytes");
        return nullptr;
    }
    HandleObject* h = asHandle(self);
    lockHandle(h);
    if (h->handle == nullptr) {
        PyThread_release_lock(h->lock);
        PyErr_SetString(PyExc_ValueError, "parse on a closed Parser");
        return nullptr;
    }
    ParseRun run;
    // The bytes object is immutable and held by the arguments, so it may be read unlocked.
    Py_BEGIN_ALLOW_THREADS
    run = runParse(h, bytes, static_cast<int>(size), strict != 0, symbol);
    Py_END_ALLOW_THREADS
    PyObject* result = nullptr;
    ReadOutcome outcome = ReadOutcome::kUnsupported;
    if (!run.outOfMemory && answer == Answer::kValues && run.status == SVT_OK) {
        outcome = orvane_python::readResult(h->schema, h->json, run.length, h->scratch, &result);
    }
    // The library escapes every byte outside printable ASCII, so the text is ASCII.
    if (!run.outOfMemory && outcome == ReadOutcome::kUnsupported) result = PyUnicode_DecodeASCII(h->json, run.length, "strict");
    PyThread_release_lock(h->lock);
    if (run.outOfMemory) return PyErr_NoMemory();
    if (result == nullptr) return nullptr;
    return Py_BuildValue("(iN)", run.status, result);
}

PyObject* handleParse(PyObject* self, PyObject* args) { return parseAndAnswer(self, args, Answer::kJsonText); }

PyObject* handleParseValues(PyObject* self, PyObject* args) { return parseAndAnswer(self, args, Answer::kValues); }

PyObject* handleClose(PyObject* self, PyObject*) {
    HandleObject* h = asHandle(self);
    lockHandle(h);
    SVT_delete(h->handle);
    h->handle = nullptr;
    PyThread_release_lock(h->lock);
    Py_RETURN_NONE;
}

PyObject* handleClosed(PyObject* self, void*) { return PyBool_FromLong(asHandle(self)->handle == nullptr); }

PyObject* handleNew(PyTypeObject* type, PyObject* args, PyObject* kwargs) {
    PyObject* entries = nullptr;
    PyObject* defaults = nullptr;
    if ((kwargs != nullptr && PyDict_Size(kwargs) != 0) || !PyArg_ParseTuple(args, "OO:Handle", &entries, &defaults)) {
        if (!PyErr_Occurred()) PyErr_SetString(PyExc_TypeError, "Handle() takes the schema and defaults, by position");
        return nullptr;
    }
    allocfunc alloc = reinterpret_cast<allocfunc>(PyType_GetSlot(type, Py_tp_alloc));
    PyObject* self = alloc(type, 0);
    if (self == nullptr) return nullptr;
    HandleObject* h = asHandle(self);
    if (!orvane_python::compileSchema(entries, defaults, &h->schema)) {
        Py_DECREF(self);
        return nullptr;
    }
    h->handle = SVT_create();
    h->lock = PyThread_allocate_lock();
    h->json = static_cast<char*>(std::malloc(kFirstJsonRoom));
    h->scratch = static_cast<char*>(std::malloc(kFirstJsonRoom));
    h->jsonCapacity = kFirstJsonRoom;
    if (h->handle == nullptr || h->lock == nullptr || h->json == nullptr || h->scratch == nullptr) {
        Py_DECREF(self);
        return PyErr_NoMemory();
    }
    return self;
}

void handleDealloc(PyObject* self) {
    HandleObject* h = asHandle(self);
    SVT_delete(h->handle);
    std::free(h->json);
    std::free(h->scratch);
    if (h->lock != nullptr) PyThread_free_lock(h->lock);
    orvane_python::releaseSchema(&h->schema);
    PyTypeObject* type = Py_TYPE(self);
    freefunc release = reinterpret_cast<freefunc>(PyType_GetSlot(type, Py_tp_free));
    release(self);
    Py_DECREF(type);
}

PyMethodDef kHandleMethods[] = {
    {"parse", handleParse, METH_VARARGS,
     "parse(data: bytes, strict: bool, symbol: tuple[int, int, int] | None = None, /) -> tuple[int, str]\n"
     "Parses data; answers the status and the library's result object as JSON text."},
    {"parse_values", handleParseValues, METH_VARARGS,
     "parse_values(data: bytes, strict: bool, symbol: tuple[int, int, int] | None = None, /)"
     " -> tuple[int, dict | str]\n"
     "Parses data; answers the status and, after a successful parse, the Document's attributes read by the\n"
     "schema (the JSON text when it holds what the reader leaves to Python, and after a failed parse)."},
    {"close", handleClose, METH_NOARGS, "close() -> None\nFrees the handle; later parses raise ValueError."},
    {nullptr, nullptr, 0, nullptr},
};

PyGetSetDef kHandleGetSet[] = {
    {"closed", handleClosed, nullptr, "True once close() was called.", nullptr},
    {nullptr, nullptr, nullptr, nullptr, nullptr},
};

PyType_Slot kHandleSlots[] = {
    {Py_tp_new, reinterpret_cast<void*>(handleNew)},
    {Py_tp_dealloc, reinterpret_cast<void*>(handleDealloc)},
    {Py_tp_methods, kHandleMethods},
    {Py_tp_getset, kHandleGetSet},
    {Py_tp_doc, const_cast<char*>("Handle(schema, defaults)\n"
                                  "A parser handle of the native library; calls on it run one at a time.")},
    {0, nullptr},
};

PyType_Spec kHandleSpec = {
    "orvane_parser._native.Handle",
    static_cast<int>(sizeof(HandleObject)),
    0,
    Py_TPFLAGS_DEFAULT | Py_TPFLAGS_IMMUTABLETYPE,
    kHandleSlots,
};

PyObject* version(PyObject*, PyObject*) {
    return PyUnicode_FromFormat("%d.%d.%d", SVT_getMajorVersion(), SVT_getMinorVersion(), SVT_getBuildVersion());
}

// The reader on any text, so that the tests can hand it what the library never writes.
PyObject* readResultText(PyObject*, PyObject* args) {
    const char* text = nullptr;
    Py_ssize_t length = 0;
    PyObject* entries = nullptr;
    PyObject* defaults = nullptr;
    if (!PyArg_ParseTuple(args, "s#OO:read_result", &text, &length, &entries, &defaults)) return nullptr;
    Schema schema;
    if (!orvane_python::compileSchema(entries, defaults, &schema)) return nullptr;
    char* scratch = static_cast<char*>(PyMem_Malloc(static_cast<size_t>(length) + 1));
    PyObject* values = nullptr;
    const ReadOutcome outcome =
        scratch != nullptr ? orvane_python::readResult(schema, text, length, scratch, &values) : ReadOutcome::kError;
    PyMem_Free(scratch);
    orvane_python::releaseSchema(&schema);
    if (scratch == nullptr) return PyErr_NoMemory();
    if (outcome == ReadOutcome::kUnsupported) Py_RETURN_NONE;
    return values;
}

// CPU time of the calling thread, so that other processes on the machine do not count.
double threadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Everything a Document holds, asked the way a C caller would: every getter and check,
// the format, the counts, every raw element, the check digits, age, expiry and repairs.
int askEverything(SVT_ParserHandle* handle) {
    char buffer[256];
    char id[64];
    int value = 0;
    int other = 0;
    int sum = 0;
    for (const auto& field : orvane::kJavaTextFields) sum += field.getter(handle, buffer, sizeof buffer);
    for (const auto& flag : orvane::kJavaFlagFields) sum += flag.getter(handle, &value);
    sum += SVT_validateDocumentId(handle, &value);
    sum += SVT_validateJurisdictionCode(handle, &value);
    sum += SVT_validateBarcode(handle, 20, 15, 5, &value);
    sum += SVT_getFormat(handle, &value, &other);
    sum += SVT_getFormatName(handle, buffer, sizeof buffer);
    sum += SVT_getFieldCount(handle, &value);
    int elements = 0;
    sum += SVT_getElementCount(handle, &elements);
    for (int i = 0; i < elements; ++i) sum += SVT_getElementAt(handle, i, id, sizeof id, buffer, sizeof buffer);
    sum += SVT_validateCheckDigits(handle, &value);
    sum += SVT_getCheckDigitFailures(handle, buffer, sizeof buffer);
    sum += SVT_getAge(handle, &value);
    sum += SVT_isExpired(handle, &value);
    sum += SVT_getRepairs(handle, buffer, sizeof buffer);
    return sum;
}

// The reference the binding's cost is measured against: the parse plus everything the
// Document holds, asked of the C interface.
double timeParseAndGetters(const char* data, int size, bool strict, long rounds) {
    SVT_ParserHandle* handle = SVT_create();
    if (handle == nullptr) return -1;
    volatile int sink = 0;
    sink = sink + SVT_parse(handle, data, size);
    const double start = threadSeconds();
    for (long i = 0; i < rounds; ++i) {
        sink = sink + (strict ? SVT_parse(handle, data, size) : SVT_parseLenient(handle, data, size));
        sink = sink + askEverything(handle);
    }
    const double spent = threadSeconds() - start;
    SVT_delete(handle);
    return spent / static_cast<double>(rounds);
}

PyObject* referenceTime(PyObject*, PyObject* args) {
    PyObject* data = nullptr;
    int strict = 0;
    long rounds = 0;
    if (!PyArg_ParseTuple(args, "Spl:reference_time", &data, &strict, &rounds)) return nullptr;
    char* bytes = nullptr;
    Py_ssize_t size = 0;
    if (PyBytes_AsStringAndSize(data, &bytes, &size) != 0) return nullptr;
    if (size < 1 || size > INT_MAX || rounds < 1) {
        PyErr_SetString(PyExc_ValueError, "reference_time needs 1 to 2147483647 bytes and rounds >= 1");
        return nullptr;
    }
    double seconds = 0;
    Py_BEGIN_ALLOW_THREADS
    seconds = timeParseAndGetters(bytes, static_cast<int>(size), strict != 0, rounds);
    Py_END_ALLOW_THREADS
    if (seconds < 0) return PyErr_NoMemory();
    return PyFloat_FromDouble(seconds);
}

PyMethodDef kModuleMethods[] = {
    {"version", version, METH_NOARGS, "version() -> str\nThe native library's version, e.g. \"1.26.0\"."},
    {"read_result", readResultText, METH_VARARGS,
     "read_result(text: str, schema: tuple, defaults: dict, /) -> dict | None\n"
     "What parse_values reads from a result's JSON text; None where it leaves the text to Python."},
    {"reference_time", referenceTime, METH_VARARGS,
     "reference_time(data: bytes, strict: bool, rounds: int, /) -> float\n"
     "Thread CPU seconds per round of the C parse plus every getter and check, for the benchmark."},
    {nullptr, nullptr, 0, nullptr},
};

int execModule(PyObject* module) {
    PyObject* type = PyType_FromSpec(&kHandleSpec);
    if (type == nullptr) return -1;
    const int added = PyModule_AddObject(module, "Handle", type);
    if (added != 0) Py_DECREF(type);
    return added;
}

PyModuleDef_Slot kModuleSlots[] = {
    {Py_mod_exec, reinterpret_cast<void*>(execModule)},
    {0, nullptr},
};

PyModuleDef kModule = {
    PyModuleDef_HEAD_INIT,
    "orvane_parser._native",
    "The native half of orvane_parser: parser handles over the C library.",
    0,
    kModuleMethods,
    kModuleSlots,
    nullptr,
    nullptr,
    nullptr,
};

}  // namespace

PyMODINIT_FUNC PyInit__native(void) { return PyModuleDef_Init(&kModule); }
