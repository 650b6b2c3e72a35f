#include "probe/inspect/probe_accessibility_auditor.h"

#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

namespace traits = platform::accessibility_traits;
using fakes::FakeView;
using platform::Rect;
using ProbeAccessibilityAuditor::audit;
using ProbeAccessibilityAuditor::AuditIssue;

std::shared_ptr<FakeView> element(std::string label, platform::AccessibilityTraits itsTraits,
                                  Rect frame) {
  auto view = std::make_shared<FakeView>();
  view->isElement = true;
  view->label = std::move(label);
  view->traits = itsTraits;
  view->frame = frame;
  return view;
}

constexpr Rect large{{0, 0}, {44, 44}};

class ProbeAccessibilityAuditorTest : public FakeWorldTest {
 protected:
  std::vector<AuditIssue> issuesOf(const std::string& label,
                                   platform::AccessibilityTraits itsTraits, Rect frame) {
    window_->children = {element(label, itsTraits, frame)};
    return audit();
  }

  std::shared_ptr<fakes::FakeWindow> window_ = world_.application.addKeyWindow();
};

TEST_F(ProbeAccessibilityAuditorTest, FindsNothingWithoutAKeyWindow) {
  window_->children = {element(" ", traits::button, large)};
  EXPECT_EQ(audit().size(), 1U);
  window_->key = false;
  EXPECT_TRUE(audit().empty());
}

TEST_F(ProbeAccessibilityAuditorTest, FindsSmallTouchTargets) {
  EXPECT_TRUE(issuesOf("Go", traits::button, large).empty());
  EXPECT_EQ(
      issuesOf("Go", traits::button, {{3.9, -0.5}, {44, 43.9}}),
      (std::vector<AuditIssue>{{"Button \"Go\"", "Touch target too small (44x43, minimum 44x44)",
                                "warning", 3, 0, 44, 43}}));
  EXPECT_EQ(
      issuesOf("Help", traits::link, {{0, 0}, {20, 20}}),
      (std::vector<AuditIssue>{{"Link \"Help\"", "Touch target too small (20x20, minimum 44x44)",
                                "warning", 0, 0, 20, 20}}));
  EXPECT_TRUE(issuesOf("Go", traits::adjustable, {{0, 0}, {20, 20}}).empty());
}

TEST_F(ProbeAccessibilityAuditorTest, FindsButtonsWithoutALabel) {
  EXPECT_EQ(issuesOf(" \t", traits::button, {{137.5, 362.9}, {100, 100}}),
            (std::vector<AuditIssue>{{"Button at (187,412)", "Button missing accessibility label",
                                      "error", 137, 362, 100, 100}}));
  EXPECT_EQ(issuesOf("\u00A0\u3000", traits::button, large).size(), 1U);
  EXPECT_TRUE(issuesOf(" a ", traits::button, large).empty());
  EXPECT_TRUE(issuesOf("\n", traits::button, large).empty()) << "line breaks are no blanks";
}

TEST_F(ProbeAccessibilityAuditorTest, SaysBothOfAButtonThatIsBlankAndSmall) {
  EXPECT_EQ(issuesOf("   ", traits::button, {{0, 0}, {30, 30}}),
            (std::vector<AuditIssue>{
                {"Button at (15,15)", "Button missing accessibility label", "error", 0, 0, 30, 30},
                {"Button \"   \"", "Touch target too small (30x30, minimum 44x44)", "warning", 0, 0,
                 30, 30}}));
}

TEST_F(ProbeAccessibilityAuditorTest, NeverAsksALinkForALabel) {
  EXPECT_TRUE(issuesOf("  ", traits::link, large).empty());
}

TEST_F(ProbeAccessibilityAuditorTest, FindsImagesWithoutADescription) {
  EXPECT_TRUE(issuesOf("Logo", traits::image, {{0, 0}, {5, 5}}).empty());
  EXPECT_EQ(issuesOf("\t", traits::image, {{0, 0}, {5, 5}}),
            (std::vector<AuditIssue>{{"Image at (2,2)", "Image missing accessibility description",
                                      "warning", 0, 0, 5, 5}}));
}

TEST_F(ProbeAccessibilityAuditorTest, TakesAButtonThatIsAnImageForAButton) {
  EXPECT_EQ(issuesOf(" ", traits::image | traits::button, large).size(), 1U);
}

TEST_F(ProbeAccessibilityAuditorTest, QuotesTheFirstThirtyCharacters) {
  const std::string thirty(30, 'x');
  EXPECT_EQ(issuesOf(thirty, traits::link, {{0, 0}, {9, 9}}).at(0).element,
            "Link \"" + thirty + "\"");
  EXPECT_EQ(issuesOf(thirty + "y", traits::link, {{0, 0}, {9, 9}}).at(0).element,
            "Link \"" + thirty + "\"");
  std::string astronauts;
  for (int count = 0; count < 31; ++count) {
    astronauts += "👩‍🚀";
  }
  EXPECT_EQ(issuesOf(astronauts, traits::link, {{0, 0}, {9, 9}}).at(0).element,
            "Link \"" + astronauts.substr(0, astronauts.size() / 31 * 30) + "\"");
}

TEST_F(ProbeAccessibilityAuditorTest, GoesFromTopToBottom) {
  window_->children = {element("below", traits::button, {{0, 100}, {9, 9}}),
                       element("above", traits::button, {{0, 10}, {9, 9}})};
  const std::vector<AuditIssue> issues = audit();
  ASSERT_EQ(issues.size(), 2U);
  EXPECT_EQ(issues[0].y, 10);
  EXPECT_EQ(issues[1].y, 100);
}

}  // namespace
}  // namespace tarnix::tests
