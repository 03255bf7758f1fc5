#pragma once

#include <QString>
#include <string>

// Texts of the host and of the toolkit.
namespace veltora::app {

inline QString shown(const std::wstring& text) { return QString::fromStdWString(text); }
inline QString shown(const std::string& utf8) { return QString::fromStdString(utf8); }
inline std::wstring wide(const QString& text) { return text.toStdWString(); }
inline std::string utf8(const QString& text) { return text.toStdString(); }

}  // namespace veltora::app
