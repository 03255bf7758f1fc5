#include "arx/ed/edports.h"

#include "arx/ed/acutads.h"
#include "base/text.h"

namespace base = veltora::base;

AcEdPorts& acedPorts() {
  static auto* const ports = new AcEdPorts;
  return *ports;
}

AcEdAnswer acedMessageBox(const std::wstring& text, const std::wstring& title, AcEdButtons buttons) {
  if (acedPorts().messageBox) return acedPorts().messageBox(text, title, buttons);
  acedPrompt(L"\n" + text + L"\n");
  return buttons == AcEdButtons::kOk ? AcEdAnswer::kOk : AcEdAnswer::kCancel;
}

std::optional<std::wstring> acedReadLine(const std::wstring& prompt, base::Request request) {
  base::LineSource* const source = acedPorts().source;
  if (!source) return std::nullopt;
  const std::size_t head = prompt.rfind(L'\n') + 1;  // 0 without a line end
  const std::wstring tail = prompt.substr(head);
  if (head > 0) acedPrompt(prompt.substr(0, head));
  request.prompt = base::toUtf8(tail);
  for (;;) {
    const std::optional<std::string> read = source->readLine(request);
    const std::wstring line = read ? base::trim(base::fromUtf8(*read), L" \t\r\n") : std::wstring();
    if (read && line.starts_with(L';')) continue;
    if (!source->interactive()) acedPrompt(tail + line + L"\n");
    if (!read) return std::nullopt;
    return line;
  }
}

void acedRefuse(const std::wstring& message) {
  base::LineSource* const source = acedPorts().source;
  if (source && !source->interactive()) throw base::ScriptError{base::toUtf8(message)};
  acedPrompt(message + L"\n");
}
