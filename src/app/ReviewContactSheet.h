#pragma once
// The contact sheet of the project's output folder (ContactSheet): the grid
// gathered from the files as they are, and the page written with its
// thumbnails. Both fronts call these; main thread only.

#include "app/ContactSheet.h"

#include <QString>
#include <optional>

class AppModel;

namespace ReviewContactSheet {

// Per device folder, the project's checkpoints by its languages.
ContactSheet::Page page(const AppModel &model);
// Writes outputDirectory/index.html and its thumbnails (made off the main
// thread while the event loop runs); the page's location, or nothing with
// lastError set.
std::optional<QString> write(AppModel &model);

} // namespace ReviewContactSheet
