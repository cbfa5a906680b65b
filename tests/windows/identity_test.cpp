// How applications and windows are called.
#include "windows/identity.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/desktops.h"

namespace tilora {
namespace {

using simulated::ApplicationTraits;
using test::applicationOf;
using test::elementOf;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

TEST(NormalisedText, IsTrimmedAndLowerCased) {
  EXPECT_EQ(normalized("  My Notes\n"), "my notes");
  EXPECT_EQ(normalized("\u3000ÀÉ\u3000"), "àé");
}

TEST(NormalisedText, IsNamedWhenNothingIsLeft) {
  EXPECT_EQ(normalized(""), "<empty>");
  EXPECT_EQ(normalized(" \t\n"), "<empty>");
}

std::string identifierOfApplication(const ApplicationTraits& traits) {
  const auto desktop = test::laptop().app(4242, traits).build();
  return applicationIdentifier(*applicationOf(*desktop, 4242));
}

TEST(ApplicationIdentifier, IsTheBundleIdentifierAsItStands) {
  EXPECT_EQ(identifierOfApplication({.bundle = " Com.Example.Notes", .name = "Notes"}), " Com.Example.Notes");
}

TEST(ApplicationIdentifier, IsTheNameWithoutABundleIdentifier) {
  EXPECT_EQ(identifierOfApplication({.name = "My Notes "}), "My Notes ");
  EXPECT_EQ(identifierOfApplication({.bundle = "", .name = "Notes"}), "Notes");
}

TEST(ApplicationIdentifier, IsTheProcessWithoutEither) {
  EXPECT_EQ(identifierOfApplication({}), "pid:4242");
  EXPECT_EQ(identifierOfApplication({.bundle = "", .name = ""}), "pid:4242");
}

std::string titleFor(const std::optional<AttributeValue>& title) {
  const auto desktop = test::laptop().app(100).window(1).attribute(AttributeName::title, title).build();
  return titleOf(*elementOf(*desktop, 100));
}

TEST(Titles, AreTrimmedAndKeepTheirCase) {
  EXPECT_EQ(titleFor(std::string("Notes")), "Notes");
  EXPECT_EQ(titleFor(std::string(" My Notes\n")), "My Notes");
}

TEST(Titles, MissingBlankOrOfAnotherTypeAreUntitled) {
  EXPECT_EQ(titleFor(std::nullopt), "<untitled>");
  EXPECT_EQ(titleFor(std::string()), "<untitled>");
  EXPECT_EQ(titleFor(std::string("   ")), "<untitled>");
  EXPECT_EQ(titleFor(Number(std::int64_t{5})), "<untitled>");
}

std::optional<std::string> identifierFor(const std::optional<AttributeValue>& identifier) {
  const auto desktop = test::laptop().app(100).window(1).attribute(AttributeName::identifier, identifier).build();
  return identifierOf(*elementOf(*desktop, 100));
}

TEST(Identifiers, AreTrimmedAndLowerCased) { EXPECT_EQ(identifierFor(std::string(" Inspector ")), "inspector"); }

TEST(Identifiers, MissingBlankOrOfAnotherTypeAreAbsent) {
  EXPECT_EQ(identifierFor(std::nullopt), std::nullopt);
  EXPECT_EQ(identifierFor(std::string()), std::nullopt);
  EXPECT_EQ(identifierFor(std::string(" \t\u00A0")), std::nullopt);
  EXPECT_EQ(identifierFor(true), std::nullopt);
}

WindowIdentitySeed seed(std::int64_t number, std::string role, std::string subrole, std::string title,
                        std::optional<std::string> identifier = std::nullopt) {
  return {{100, number}, nullptr, nullptr, std::move(role), std::move(subrole), std::move(identifier), std::move(title)};
}

WindowIdentitySeed standardWindow(std::int64_t number, std::string title = "<untitled>") {
  return seed(number, "AXWindow", "AXStandardWindow", std::move(title));
}

auto named(std::int64_t number, const std::string& identity) { return Pair(WindowKey{100, number}, identity); }

TEST(WindowIdentities, ALoneWindowGoesByItsRole) {
  EXPECT_THAT(windowIdentities({standardWindow(1, "Notes")}), UnorderedElementsAre(named(1, "role:axwindow||axstandardwindow")));
}

TEST(WindowIdentities, WindowsThatShareTheirRoleGoByTheirTitles) {
  EXPECT_THAT(windowIdentities({standardWindow(1, "Notes"), standardWindow(2, "Über Uns")}),
              UnorderedElementsAre(named(1, "title:notes"), named(2, "title:über uns")));
}

TEST(WindowIdentities, UntitledWindowsOfOneRoleShareOneIdentity) {
  EXPECT_THAT(windowIdentities({standardWindow(1), standardWindow(2), seed(3, "AXWindow", "AXStandardWindow", "x", "inspector")}),
              UnorderedElementsAre(named(1, "title:<untitled>"), named(2, "title:<untitled>"), named(3, "axid:inspector")));
}

TEST(WindowIdentities, AWindowWithAnIdentifierDoesNotCountAmongTheRoles) {
  EXPECT_THAT(windowIdentities({seed(1, "AXWindow", "AXStandardWindow", "Palette", "inspector"), standardWindow(2, "Notes")}),
              UnorderedElementsAre(named(1, "axid:inspector"), named(2, "role:axwindow||axstandardwindow")));
}

TEST(WindowIdentities, RolesAreComparedAfterNormalising) {
  EXPECT_THAT(windowIdentities({seed(1, " axwindow", "AXSTANDARDWINDOW", "A"), standardWindow(2, "B")}),
              UnorderedElementsAre(named(1, "title:a"), named(2, "title:b")));
}

TEST(WindowIdentities, RolesThatAlternateAreCountedApart) {
  EXPECT_THAT(windowIdentities({standardWindow(1, "A"), seed(2, "AXWindow", "<none>", "B"), standardWindow(3, "C")}),
              UnorderedElementsAre(named(1, "title:a"), named(2, "role:axwindow||<none>"), named(3, "title:c")));
}

TEST(WindowIdentities, ABlankSubroleIsNamedEmpty) {
  EXPECT_THAT(windowIdentities({seed(1, "AXWindow", "   ", "Notes")}), UnorderedElementsAre(named(1, "role:axwindow||<empty>")));
}

TEST(WindowIdentities, AnEmptyTitleIsNamedEmpty) {
  EXPECT_THAT(windowIdentities({standardWindow(1, ""), standardWindow(2, "B")}),
              UnorderedElementsAre(named(1, "title:<empty>"), named(2, "title:b")));
}

TEST(WindowIdentities, OfTwoWindowsWithOneKeyTheLaterCounts) {
  EXPECT_THAT(windowIdentities({standardWindow(1, "First"), standardWindow(1, "Second")}), UnorderedElementsAre(named(1, "title:second")));
}

TEST(WindowIdentities, WithoutWindowsThereAreNone) { EXPECT_THAT(windowIdentities({}), IsEmpty()); }

TEST(TextAfter, IsWhatFollowsThePrefix) {
  EXPECT_EQ(textAfter("title:notes", titlePrefix.size()), "notes");
  EXPECT_EQ(textAfter("title:", titlePrefix.size()), "");
}

TEST(TextAfter, IsEmptyForATextThatIsShorter) { EXPECT_EQ(textAfter("role", titlePrefix.size()), ""); }

}  // namespace
}  // namespace tilora
