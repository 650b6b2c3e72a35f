#pragma once

#include "probe/link/companion_message.h"

/// What a companion asks about the screen, each answered under the name of the screen on view. Main
/// thread.
namespace tarnix::ProbeCommandHandler {

/// Answers "command.findElement" with the elements whose label fits; does not answer what is no
/// `FindCommand`.
void handleFindElement(const CompanionMessage& message);

/// Answers "command.screenText" with the visible text, line by line.
void handleScreenText();

/// Answers "command.requestSnapshot" with the views and their frames.
void handleSnapshot();

/// Answers "command.requestScreenshot" with a picture of the key window; does not answer when there
/// is none to be had.
void handleScreenshot();

/// Answers "command.accessibilityAudit" with what keeps people from using the screen.
void handleAccessibilityAudit();

/// Answers "command.getWebViewConsole" with what web pages wrote; a payload that is no
/// `GetConsoleCmd` asks for the usual number of lines.
void handleGetWebViewConsole(const CompanionMessage& message);

}  // namespace tarnix::ProbeCommandHandler
