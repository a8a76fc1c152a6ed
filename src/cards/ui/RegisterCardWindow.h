#pragma once

namespace Bramlet {

// Tells the frame how to make card windows: type codes 2 ("Velkin"), 3 ("Bramlet", files
// ending in "qnd") and 4 ("Sprondle"), each starting a new card database in its own view. The
// application calls it once at start-up.
void RegisterCardWindow();

} // namespace Bramlet
