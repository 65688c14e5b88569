#ifndef DRIVEWIZ_TESTS_FUZZ_SUPPORT_H
#define DRIVEWIZ_TESTS_FUZZ_SUPPORT_H

// Shared by the fuzz targets: a Qt application, a dialog recorder in place of message
// boxes, and the check that ends a run when an oracle disagrees.

#include "platform/dialogrecorder.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <QString>

#include <cstddef>
#include <cstdint>

namespace drivewiz::fuzz {

/// Creates the application object once (offscreen, so rich text can lay out) and
/// installs a dialog recorder; returns the recorder, emptied for the next input.
DialogRecorder &setUp();

/// Reports a disagreement with the input's details and aborts, so libFuzzer keeps the input.
[[noreturn]] void fail(const char *check, const QString &detail);

/// Where targets that read files put them: memory-backed when the system has such a place.
QString scratchFolder();

/// A text made of the provider's next bytes (UTF-8; invalid sequences become U+FFFD).
QString text(FuzzedDataProvider &data, size_t maxBytes);

} // namespace drivewiz::fuzz

#define FUZZ_CHECK(condition, detail)                                                              \
    do {                                                                                           \
        if (!(condition)) drivewiz::fuzz::fail(#condition, (detail));                              \
    } while (false)

#endif // DRIVEWIZ_TESTS_FUZZ_SUPPORT_H
