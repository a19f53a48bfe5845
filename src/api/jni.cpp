// The Java binding: native methods of net.orvane.scrivlet.Scrivlet. One call parses an
// input and copies every answer into the fields of a Java result object.
#include <jni.h>

#include "api/handle.h"
#include "api/java_fields.h"
#include "engine/status.h"

namespace {

using orvane::kErrJava;
using orvane::kOk;

using orvane::JavaFlagField;
using orvane::JavaTextField;
using orvane::kJavaFlagFields;
using orvane::kJavaTextFields;

constexpr const char* kStringSignature = "Ljava/lang/String;";
constexpr const char* kIntSignature = "I";

SVT_ParserHandle* handleOf(jlong handle) { return reinterpret_cast<SVT_ParserHandle*>(handle); }

// A field of the object's class, or null with no exception left pending: a Java caller
// is told by the -27 the call returns, not by an error thrown at it.
jfieldID fieldOf(JNIEnv* env, jclass type, const char* name, const char* signature) {
    jfieldID id = env->GetFieldID(type, name, signature);
    if (id == nullptr || env->ExceptionCheck()) {
        env->ExceptionClear();
        return nullptr;
    }
    return id;
}

// Stores the getter's answer when it is a non-empty text; a field whose getter gives
// none keeps what it held. The handle's scratch buffer holds the answer meanwhile.
int storeText(JNIEnv* env, jobject result, jclass type, SVT_ParserHandle* handle, const JavaTextField& field) {
    char* text = handle->inputCopy;
    if (field.getter(handle, text, handle->inputCopyCapacity) != SVT_OK || text[0] == '\0') return kOk;
    jfieldID id = fieldOf(env, type, field.name, kStringSignature);
    if (id == nullptr) return kErrJava;
    jstring value = env->NewStringUTF(text);
    if (value == nullptr || env->ExceptionCheck()) {
        env->ExceptionClear();
        return kErrJava;
    }
    env->SetObjectField(result, id, value);
    env->DeleteLocalRef(value);
    return kOk;
}

int storeInt(JNIEnv* env, jobject object, jclass type, const char* name, int value) {
    jfieldID id = fieldOf(env, type, name, kIntSignature);
    if (id == nullptr) return kErrJava;
    env->SetIntField(object, id, value);
    return kOk;
}

// Flags reach Java as 0 (no), 1 (yes) or 2 (anything else).
int flagValue(int answer) { return answer == 0 || answer == 1 ? answer : 2; }

// Checks reach Java as 1 (valid), 2 (invalid) or 0 (not checkable).
int checkValue(int status) { return status == SVT_CHECK_VALID ? 1 : status == SVT_CHECK_INVALID ? 2 : 0; }

int storeTexts(JNIEnv* env, jobject result, jclass type, SVT_ParserHandle* handle, const JavaTextField* fields, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        if (int status = storeText(env, result, type, handle, fields[i])) return status;
    }
    return kOk;
}

int storeFlags(JNIEnv* env, jobject result, jclass type, SVT_ParserHandle* handle) {
    int answer = 2;  // one answer shared by the three flags
    for (const JavaFlagField& flag : kJavaFlagFields) {
        if (flag.getter(handle, &answer) != SVT_OK) continue;
        if (int status = storeInt(env, result, type, flag.name, flagValue(answer))) return status;
    }
    return kOk;
}

int storeChecks(JNIEnv* env, jobject result, jclass type, SVT_ParserHandle* handle, int* check) {
    if (SVT_validateDocumentId(handle, check) == SVT_OK) {
        if (int status = storeInt(env, result, type, "documentIdValidationStatus", checkValue(*check))) return status;
    }
    if (SVT_validateJurisdictionCode(handle, check) == SVT_OK) {
        if (int status = storeInt(env, result, type, "jurisdictionCodeValidationStatus", checkValue(*check))) return status;
    }
    return kOk;
}

// The symbol-size check, when the caller described the symbol; a check that cannot run
// stores nothing and is no error.
int storeBarcodeCheck(JNIEnv* env, jobject result, jclass type, SVT_ParserHandle* handle, jobject barcode, int* check) {
    if (barcode == nullptr) return kOk;
    jclass barcodeType = env->GetObjectClass(barcode);
    if (barcodeType == nullptr || env->ExceptionCheck()) {
        env->ExceptionClear();
        return kErrJava;
    }
    jfieldID rows = fieldOf(env, barcodeType, "rows", kIntSignature);
    jfieldID columns = rows != nullptr ? fieldOf(env, barcodeType, "columns", kIntSignature) : nullptr;
    jfieldID level = columns != nullptr ? fieldOf(env, barcodeType, "ecl", kIntSignature) : nullptr;
    if (level == nullptr) {
        env->DeleteLocalRef(barcodeType);
        return kErrJava;
    }
    const int status = SVT_validateBarcode(handle, env->GetIntField(barcode, columns), env->GetIntField(barcode, rows),
                                           env->GetIntField(barcode, level), check);
    env->DeleteLocalRef(barcodeType);
    if (status != SVT_OK) return kOk;
    return storeInt(env, result, type, "barcodeValidationStatus", checkValue(*check));
}

using ParseFunction = int (*)(SVT_ParserHandle*, const void*, int);

// The bytes of a direct buffer, checked against its capacity so that Java can never make
// the library read outside it; a buffer that is not direct has no address.
int parseBuffer(JNIEnv* env, SVT_ParserHandle* handle, jobject buffer, jint length, ParseFunction parse = SVT_parse) {
    const void* bytes = buffer != nullptr ? env->GetDirectBufferAddress(buffer) : nullptr;
    if (bytes != nullptr && length > env->GetDirectBufferCapacity(buffer)) return orvane::kErrInvalidArgument;
    return parse(handle, bytes, length);
}

int fillResult(JNIEnv* env, jobject result, SVT_ParserHandle* handle, jobject barcode) {
    jclass type = result != nullptr ? env->GetObjectClass(result) : nullptr;
    if (type == nullptr || env->ExceptionCheck()) {
        env->ExceptionClear();
        return kErrJava;
    }
    int check = 1;  // one status shared by the checks
    const JavaTextField* texts = kJavaTextFields;
    int status = storeTexts(env, result, type, handle, texts, orvane::kJavaFieldsBeforeFlags);
    if (status == kOk) status = storeFlags(env, result, type, handle);
    if (status == kOk) {
        status = storeTexts(env, result, type, handle, texts + orvane::kJavaFieldsBeforeFlags,
                            orvane::kJavaFieldsBeforeChecks - orvane::kJavaFieldsBeforeFlags);
    }
    if (status == kOk) status = storeChecks(env, result, type, handle, &check);
    if (status == kOk) {
        status = storeTexts(env, result, type, handle, texts + orvane::kJavaFieldsBeforeChecks,
                            orvane::kJavaTextFieldCount - orvane::kJavaFieldsBeforeChecks);
    }
    if (status == kOk) status = storeBarcodeCheck(env, result, type, handle, barcode, &check);
    env->DeleteLocalRef(type);
    return status;
}

// A Java byte array as the buffer of a text answer: the C function writes into the
// array's elements, whose length is the capacity; a null array is a null buffer.
class ByteArrayBuffer {
  public:
    ByteArrayBuffer(JNIEnv* env, jbyteArray array)
        : env_(env), array_(array), bytes_(array != nullptr ? env->GetByteArrayElements(array, nullptr) : nullptr),
          capacity_(bytes_ != nullptr ? env->GetArrayLength(array) : 0) {}
    ~ByteArrayBuffer() {
        if (bytes_ != nullptr) env_->ReleaseByteArrayElements(array_, bytes_, 0);
    }
    ByteArrayBuffer(const ByteArrayBuffer&) = delete;
    ByteArrayBuffer& operator=(const ByteArrayBuffer&) = delete;

    char* data() const { return reinterpret_cast<char*>(bytes_); }
    int capacity() const { return capacity_; }

  private:
    JNIEnv* env_;
    jbyteArray array_;
    jbyte* bytes_;
    int capacity_;
};

// The first element of an int array, which carries an answer back to Java.
int storeFirst(JNIEnv* env, jintArray out, int value) {
    if (out == nullptr || env->GetArrayLength(out) < 1) return orvane::kErrInvalidArgument;
    const jint v = value;
    env->SetIntArrayRegion(out, 0, 1, &v);
    return kOk;
}

// An int answer of the C interface stored in out[0] when it succeeded.
template <typename Ask>
jint intAnswer(JNIEnv* env, jintArray out, Ask ask) {
    if (out == nullptr || env->GetArrayLength(out) < 1) return orvane::kErrInvalidArgument;
    int value = 0;
    const int status = ask(&value);
    if (status == SVT_OK) storeFirst(env, out, value);
    return status;
}

}  // namespace

extern "C" {

SVT_API JNIEXPORT jlong JNICALL Java_net_orvane_scrivlet_Scrivlet_createNativeInstance(JNIEnv*, jobject) {
    return reinterpret_cast<jlong>(SVT_create());
}

SVT_API JNIEXPORT void JNICALL Java_net_orvane_scrivlet_Scrivlet_destroyNativeInstance(JNIEnv*, jobject, jlong handle) {
    if (handle != 0) SVT_delete(handleOf(handle));
}

SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeParse(JNIEnv* env, jobject, jlong handle,
                                                                             jobject result, jobject buffer, jint length,
                                                                             jobject barcode) {
    SVT_ParserHandle* parser = handleOf(handle);
    const int status = parseBuffer(env, parser, buffer, length);
    if (status != SVT_OK) return status;
    return fillResult(env, result, parser, barcode);
}

// The lenient parse, filling the result object exactly as nativeParse does.
SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeParseLenient(JNIEnv* env, jobject, jlong handle,
                                                                                    jobject result, jobject buffer,
                                                                                    jint length, jobject barcode) {
    SVT_ParserHandle* parser = handleOf(handle);
    const int status = parseBuffer(env, parser, buffer, length, SVT_parseLenient);
    if (status != SVT_OK) return status;
    return fillResult(env, result, parser, barcode);
}

// The answers about the last parse: each one C function, its text written into a Java
// byte array and its numbers into an int array.
SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeGetFormat(JNIEnv* env, jobject, jlong handle,
                                                                                jintArray out) {
    if (out == nullptr || env->GetArrayLength(out) < 2) return orvane::kErrInvalidArgument;
    int format[2] = {0, 0};
    const int status = SVT_getFormat(handleOf(handle), &format[0], &format[1]);
    if (status == SVT_OK) {
        const jint values[2] = {format[0], format[1]};
        env->SetIntArrayRegion(out, 0, 2, values);
    }
    return status;
}

SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeGetFormatName(JNIEnv* env, jobject, jlong handle,
                                                                                    jbyteArray buffer) {
    ByteArrayBuffer text(env, buffer);
    return SVT_getFormatName(handleOf(handle), text.data(), text.capacity());
}

SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeGetFieldCount(JNIEnv* env, jobject, jlong handle,
                                                                                    jintArray out) {
    return intAnswer(env, out, [&](int* value) { return SVT_getFieldCount(handleOf(handle), value); });
}

SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeGetElementCount(JNIEnv* env, jobject,
                                                                                      jlong handle, jintArray out) {
    return intAnswer(env, out, [&](int* value) { return SVT_getElementCount(handleOf(handle), value); });
}

SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeGetElementAt(JNIEnv* env, jobject, jlong handle,
                                                                                   jint index, jbyteArray id,
                                                                                   jbyteArray value) {
    ByteArrayBuffer idText(env, id);
    ByteArrayBuffer valueText(env, value);
    return SVT_getElementAt(handleOf(handle), index, idText.data(), idText.capacity(), valueText.data(),
                            valueText.capacity());
}

// The id comes NUL-terminated in its array; one without a terminator is refused.
SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeGetElement(JNIEnv* env, jobject, jlong handle,
                                                                                 jbyteArray id, jbyteArray value) {
    ByteArrayBuffer idText(env, id);
    ByteArrayBuffer valueText(env, value);
    if (idText.data() == nullptr || idText.capacity() < 1 || idText.data()[idText.capacity() - 1] != '\0') {
        return orvane::kErrInvalidArgument;
    }
    return SVT_getElement(handleOf(handle), idText.data(), valueText.data(), valueText.capacity());
}

SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeValidateCheckDigits(JNIEnv* env, jobject,
                                                                                          jlong handle, jintArray out) {
    return intAnswer(env, out, [&](int* value) { return SVT_validateCheckDigits(handleOf(handle), value); });
}

SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeGetCheckDigitFailures(JNIEnv* env, jobject,
                                                                                            jlong handle,
                                                                                            jbyteArray buffer) {
    ByteArrayBuffer text(env, buffer);
    return SVT_getCheckDigitFailures(handleOf(handle), text.data(), text.capacity());
}

SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeGetAge(JNIEnv* env, jobject, jlong handle,
                                                                             jintArray out) {
    return intAnswer(env, out, [&](int* value) { return SVT_getAge(handleOf(handle), value); });
}

SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeIsExpired(JNIEnv* env, jobject, jlong handle,
                                                                                jintArray out) {
    return intAnswer(env, out, [&](int* value) { return SVT_isExpired(handleOf(handle), value); });
}

SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeGetRepairs(JNIEnv* env, jobject, jlong handle,
                                                                                 jbyteArray buffer) {
    ByteArrayBuffer text(env, buffer);
    return SVT_getRepairs(handleOf(handle), text.data(), text.capacity());
}

// out[0] receives the length the object needs, also when it does not fit.
SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeGetResultJson(JNIEnv* env, jobject, jlong handle,
                                                                                    jbyteArray buffer, jintArray out) {
    if (out == nullptr || env->GetArrayLength(out) < 1) return orvane::kErrInvalidArgument;
    ByteArrayBuffer text(env, buffer);
    int length = 0;
    const int status = SVT_getResultJson(handleOf(handle), text.data(), text.capacity(), &length);
    if (status == SVT_OK || status == SVT_ERR_NO_ANSWER) storeFirst(env, out, length);
    return status;
}

SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeGetMajorVersion(JNIEnv*, jobject) {
    return SVT_getMajorVersion();
}

SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeGetMinorVersion(JNIEnv*, jobject) {
    return SVT_getMinorVersion();
}

SVT_API JNIEXPORT jint JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeGetBuildVersion(JNIEnv*, jobject) {
    return SVT_getBuildVersion();
}

SVT_API JNIEXPORT jstring JNICALL Java_net_orvane_scrivlet_Scrivlet_nativeGetVersion(JNIEnv* env, jobject) {
    return env->NewStringUTF(orvane::kVersionText);
}

}  // extern "C"
