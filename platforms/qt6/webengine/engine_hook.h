#pragma once

#include "platforms/qt6/shared/web_engine_part.h"

/// Where every page of the application's web views comes past: when it is about to load for the
/// first time, before each navigation, and with each line that goes to its console.
///
/// The engine talks to its user interface through one table of virtual functions, which the library
/// for Widgets and the one for Qt Quick each fill with functions of their own, below all that an
/// application can override. Slots of both tables are replaced. What a version of the toolkit does
/// not have is left alone, and its pages go unseen.
namespace tarnix::qt6::engine_hook {

/// May be called again; each table is taken once, when its library is there. One thread at a time.
void install(const WebEnginePartContext& context);

}  // namespace tarnix::qt6::engine_hook
