#pragma once

namespace Tillane {

// Tells the frame how to make sheet windows: type code 5, caption word "Tillane", files
// ending in "qnc". The application calls it once at start-up.
void RegisterSheetWindow();

} // namespace Tillane
