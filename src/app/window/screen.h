#pragma once

namespace veltora::app {

/// Whether a window can be opened here. The toolkit ends the process when it finds no screen, so a process of
/// its own tries it. To be called before the toolkit is in use.
[[nodiscard]] bool screenIsThere();

}  // namespace veltora::app
