#pragma once

namespace Ormsey {

// Tells the frame how to make graph windows: type code 1, caption word "Ormsey", files
// ending in "qnp". The application calls it once at start-up.
void RegisterGraphWindow();

} // namespace Ormsey
