#ifndef DRIVEWIZ_PLATFORM_SCREEN_H
#define DRIVEWIZ_PLATFORM_SCREEN_H

#include "drivewiz_global.h"

namespace drivewiz {

/// Logical pixels per inch of the primary screen, rounded (96 when there is no screen
/// or no QGuiApplication). Form sizes are stored at 96 and scaled by this value.
DRIVEWIZ_EXPORT int ScreenPixelsPerInch();

/// Makes ScreenPixelsPerInch() return a fixed value, for tests; 0 removes the override.
DRIVEWIZ_EXPORT void SetScreenPixelsPerInchOverride(int pixelsPerInch);

} // namespace drivewiz

#endif // DRIVEWIZ_PLATFORM_SCREEN_H
