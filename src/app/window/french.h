#pragma once

namespace veltora::app {

/// The toolkit's own texts (its choice of files, of printers, the menus of text fields) in French from now
/// on, where its translations are installed. @return false where they are not: those texts are English then
bool speakFrench();

}  // namespace veltora::app
