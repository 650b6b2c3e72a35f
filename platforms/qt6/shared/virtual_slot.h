#pragma once

namespace tarnix::qt6 {

/// Puts `replacement` into every slot of a class's table of virtual functions that holds one of two
/// functions. The table is one of `library`, by the name that the loader knows it under. Objects of
/// the class that exist already are covered too. Returns whether there was such a slot.
bool replaceVirtualSlot(void* library, const char* tableName, void* function, void* orFunction,
                        void* replacement);

}  // namespace tarnix::qt6
