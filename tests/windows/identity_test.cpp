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
using testing::ElementsAre;
using testing::IsEmpty;

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

TEST(Titles, AreTrimmedAndKeepTheirCase) {
  const std::optional<AttributeValue> title = std::string("Notes");
  const std::optional<AttributeValue> inSpace = std::string(" My Notes\n");

  EXPECT_EQ(titleIn(title), "Notes");
  EXPECT_EQ(titleIn(inSpace), "My Notes");
}

TEST(Titles, MissingBlankOrOfAnotherTypeAreUntitled) {
  EXPECT_EQ(titleIn(std::nullopt), "<untitled>");
  EXPECT_EQ(titleIn(std::string()), "<untitled>");
  EXPECT_EQ(titleIn(std::string("   ")), "<untitled>");
  EXPECT_EQ(titleIn(Number(std::int64_t{5})), "<untitled>");
}

TEST(Identifiers, AreTrimmedAndLowerCased) { EXPECT_EQ(identifierIn(std::string(" Inspector ")), "inspector"); }

TEST(Identifiers, MissingBlankOrOfAnotherTypeAreAbsent) {
  EXPECT_EQ(identifierIn(std::nullopt), std::nullopt);
  EXPECT_EQ(identifierIn(std::string()), std::nullopt);
  EXPECT_EQ(identifierIn(std::string(" \t\u00A0")), std::nullopt);
  EXPECT_EQ(identifierIn(true), std::nullopt);
}

WindowIdentitySeed seed(std::int64_t number, std::string_view role, std::string_view subrole, std::string_view title,
                        std::optional<std::string_view> identifier = std::nullopt) {
  return {{100, number}, nullptr, nullptr, role, subrole, identifier, title};
}

WindowIdentitySeed standardWindow(std::int64_t number, std::string_view title = "<untitled>") {
  return seed(number, "AXWindow", "AXStandardWindow", title);
}

std::vector<std::string> identitiesOf(const std::vector<WindowIdentitySeed>& seeds) {
  TextPool texts;
  WindowNamer namer(texts);
  const auto& identities = namer.identities(seeds);
  return {identities.begin(), identities.end()};
}

TEST(WindowIdentities, ALoneWindowGoesByItsRole) {
  EXPECT_THAT(identitiesOf({standardWindow(1, "Notes")}), ElementsAre("role:axwindow||axstandardwindow"));
}

TEST(WindowIdentities, WindowsThatShareTheirRoleGoByTheirTitles) {
  EXPECT_THAT(identitiesOf({standardWindow(1, "Notes"), standardWindow(2, "Über Uns")}), ElementsAre("title:notes", "title:über uns"));
}

TEST(WindowIdentities, UntitledWindowsOfOneRoleShareOneIdentity) {
  EXPECT_THAT(identitiesOf({standardWindow(1), standardWindow(2), seed(3, "AXWindow", "AXStandardWindow", "x", "inspector")}),
              ElementsAre("title:<untitled>", "title:<untitled>", "axid:inspector"));
}

TEST(WindowIdentities, AWindowWithAnIdentifierDoesNotCountAmongTheRoles) {
  EXPECT_THAT(identitiesOf({seed(1, "AXWindow", "AXStandardWindow", "Palette", "inspector"), standardWindow(2, "Notes")}),
              ElementsAre("axid:inspector", "role:axwindow||axstandardwindow"));
}

TEST(WindowIdentities, RolesAreComparedAfterNormalising) {
  EXPECT_THAT(identitiesOf({seed(1, " axwindow", "AXSTANDARDWINDOW", "A"), standardWindow(2, "B")}), ElementsAre("title:a", "title:b"));
}

TEST(WindowIdentities, RolesThatAlternateAreCountedApart) {
  EXPECT_THAT(identitiesOf({standardWindow(1, "A"), seed(2, "AXWindow", "<none>", "B"), standardWindow(3, "C")}),
              ElementsAre("title:a", "role:axwindow||<none>", "title:c"));
}

TEST(WindowIdentities, ABlankSubroleIsNamedEmpty) {
  EXPECT_THAT(identitiesOf({seed(1, "AXWindow", "   ", "Notes")}), ElementsAre("role:axwindow||<empty>"));
}

TEST(WindowIdentities, AnEmptyTitleIsNamedEmpty) {
  EXPECT_THAT(identitiesOf({standardWindow(1, ""), standardWindow(2, "B")}), ElementsAre("title:<empty>", "title:b"));
}

TEST(WindowIdentities, OfOneApplicationDoNotDependOnTheOneBefore) {
  TextPool texts;
  WindowNamer namer(texts);

  EXPECT_THAT(namer.identities({standardWindow(1, "A"), standardWindow(2, "B")}), ElementsAre("title:a", "title:b"));
  EXPECT_THAT(namer.identities({standardWindow(3, "C")}), ElementsAre("role:axwindow||axstandardwindow"));
  EXPECT_THAT(namer.identities({seed(4, " AXWindow", "AXStandardWindow", "D")}), ElementsAre("role:axwindow||axstandardwindow"));
  EXPECT_THAT(namer.identities({seed(4, " AXWindow", "AXStandardWindow", "D"), standardWindow(5, "E")}), ElementsAre("title:d", "title:e"));
}

TEST(WindowIdentities, WithoutWindowsThereAreNone) { EXPECT_THAT(identitiesOf({}), IsEmpty()); }

TEST(TextAfter, IsWhatFollowsThePrefix) {
  EXPECT_EQ(textAfter("title:notes", titlePrefix.size()), "notes");
  EXPECT_EQ(textAfter("title:", titlePrefix.size()), "");
}

TEST(TextAfter, IsEmptyForATextThatIsShorter) { EXPECT_EQ(textAfter("role", titlePrefix.size()), ""); }

}  // namespace
}  // namespace tilora
