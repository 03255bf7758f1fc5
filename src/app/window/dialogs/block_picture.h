#pragma once

#include <QPixmap>
#include <string>

namespace veltora::app {

/// A picture of a drawing file as the host's renderer draws its model space, or of an image file.
/// @return a null picture, with the reason in French, when there is nothing that can be drawn
QPixmap pictureOf(const std::wstring& path, QSize size, QString& reason);

}  // namespace veltora::app
