#pragma once

#include "arx/adesk.h"
#include "arx/db/resbuf.h"
#include "base/console.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

/// Owner of a resbuf chain.
struct AcEdRbRelease {
  void operator()(resbuf* chain) const { acutRelRb(chain); }
};
using AcEdRbHolder = std::unique_ptr<resbuf, AcEdRbRelease>;

enum class AcEdButtons { kOk, kOkCancel, kYesNo, kYesNoCancel };
enum class AcEdAnswer { kOk, kCancel, kYes, kNo };

/// What the editor needs of the program around it. Everything may be absent: without a source every prompt is
/// cancelled, without a sink nothing is printed. The pointers are not owned.
struct ARX_API AcEdPorts {
  veltora::base::LineSource* source = nullptr;
  veltora::base::OutputSink* sink = nullptr;
  veltora::base::FileChooser* fileChooser = nullptr;
  /// Without it `acedAlert` prints its text and questions are answered with "cancel" (OK for a plain
  /// message).
  std::function<AcEdAnswer(const std::wstring& text, const std::wstring& title, AcEdButtons buttons)>
      messageBox;
  /// Evaluates an expression that begins with "("; it may read further lines from the source while the
  /// expression is open. @return its value as a chain owned by the caller (RTNIL for nil); null after a
  /// failure, whose message it has printed. A script's failure is thrown as `base::ScriptError`.
  std::function<resbuf*(const std::wstring& expression)> evaluate;
  /// True when a routine defined the LISP function "C:name", so that the name works as a command.
  std::function<bool(const std::wstring& name)> isLispCommand;
  /// The answers come from a routine's (command ...).
  bool routine = false;
};

/// The ports in force; assign to change them.
ARX_API AcEdPorts& acedPorts();

/// Asks through the message box port.
ARX_API AcEdAnswer acedMessageBox(const std::wstring& text, const std::wstring& title, AcEdButtons buttons);
/// Reads one answer: the part of the prompt in front of its last line end is printed, the rest shown by the
/// source. For a source that is not interactive, prompt and answer are printed, so that the output reads as a
/// transcript.
/// @param request what is asked for; its prompt is filled in here
/// @return nothing at the end of the input and without a source
ARX_API std::optional<std::wstring> acedReadLine(const std::wstring& prompt,
                                                 veltora::base::Request request = {});
/// A wrong answer: an interactive source gets the message, any other stops with `base::ScriptError`.
ARX_API void acedRefuse(const std::wstring& message);
