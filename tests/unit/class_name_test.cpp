#include "probe/inspect/class_name.h"

#include <gtest/gtest.h>

namespace tarnix::tests {
namespace {

TEST(ClassName, IsUnqualifiedByItsLastDot) {
  EXPECT_EQ(unqualifiedClassName("MainWindow"), "MainWindow");
  EXPECT_EQ(unqualifiedClassName("Shop.Cart"), "Cart");
  EXPECT_EQ(unqualifiedClassName("Shop.Cart.Row"), "Row");
  EXPECT_EQ(unqualifiedClassName("Shop.Host<Other.Page>"), "Host<Other.Page>");
  EXPECT_EQ(unqualifiedClassName("Host<Other.Page>"), "Host<Other.Page>");
  EXPECT_EQ(unqualifiedClassName(""), "");
}

TEST(ClassName, IsTheProbesOwnByItsUnqualifiedName) {
  EXPECT_TRUE(isProbeClass("ProbeOverlayWindow"));
  EXPECT_TRUE(isProbeClass("TarnixOrb"));
  EXPECT_TRUE(isProbeClass("MyProbe"));
  EXPECT_TRUE(isProbeClass("tarnix.qt6.ProbeOverlay"));
  EXPECT_FALSE(isProbeClass("probeWindow"));
  EXPECT_FALSE(isProbeClass("Probe.MainWindow"));
  EXPECT_FALSE(isProbeClass("QQuickWindow"));
}

}  // namespace
}  // namespace tarnix::tests
