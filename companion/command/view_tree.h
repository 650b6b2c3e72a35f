#pragma once

#include <string>
#include <vector>

#include "companion/output/terminal.h"
#include "probe/model/snapshot_element.h"

namespace tarnix::companion {

/// Views as a tree for people, a line each. A snapshot says nothing of which view holds which, so a
/// view stands below the smallest one whose frame holds all of its own; of two with the same frame
/// below the one that was listed first.
std::string treeOf(const std::vector<SnapshotElement>& views, const Terminal& terminal);

}  // namespace tarnix::companion
