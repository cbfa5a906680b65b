// What the document says of the data.
#include "figures/document.h"

#include <gmock/gmock.h>

namespace tilora::bench {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::string documentOf(std::vector<Entry> entries) {
  return document({{{"system", "Debian 12"}}, std::move(entries)}, "pictures", "data.csv");
}

Entry moved(const std::string& program, double milliseconds) { return {1, program, 4, "move last", {milliseconds}, {}}; }

TEST(DocumentTest, ItSaysWhereTiloraIsCloseToTheFloorAndWhereNot) {
  EXPECT_THAT(documentOf({moved("Tilora on jwm", 1.2), moved("bare client on jwm", 1), moved("Tilora on kwin", 1.5),
                          moved("bare client on kwin", 1)}),
              HasSubstr("A move with 4 windows, beside the floor: within 1.3 times of it on jwm (1.20); beyond on kwin (1.50)."));
}

TEST(DocumentTest, BeyondTheFloorItSaysWhereTiloraIsBeforeEveryOtherProgram) {
  EXPECT_THAT(documentOf({moved("Tilora on kwin", 1.5), moved("bare client on kwin", 1), moved("Tilora on mutter", 3),
                          moved("bare client on mutter", 2), moved("dwm", 2), moved("wmctrl script", 9)}),
              HasSubstr("beyond on kwin (1.50, before every other program all the same) and mutter (1.50)."));
}

TEST(DocumentTest, TheFastestComesFirst) {
  EXPECT_THAT(documentOf({moved("Tilora on openbox", 2), moved("dwm", 1), moved("i3", 3)}),
              HasSubstr("Milliseconds to the last change of a move with 4 windows: dwm 1.00, Tilora on openbox 2.00 and i3 3.00."));
}

TEST(DocumentTest, AScriptIsWeighedByHowOftenItsKeyIsPressed) {
  const auto entry = [](const std::string& program, const std::string& measure, double value) {
    return Entry{1, program, 4, measure, {value}, {}};
  };
  EXPECT_THAT(documentOf({entry("Tilora on openbox", "idle", 0.1), entry("Tilora on openbox", "press cost", 2),
                          entry("wmctrl script", "idle", 0), entry("wmctrl script", "press cost", 12)}),
              HasSubstr("Tilora takes less processor time than the wmctrl script from 6.0 key presses a minute on, and more below that."));
}

TEST(DocumentTest, FewerPressesThanElsewhereAreNamed) {
  const auto pressed = [](const std::string& program, std::size_t times) {
    return Entry{1, program, 4, "move last", std::vector<double>(times, 1), {}};
  };
  const std::string text = documentOf({pressed("dwm", 20), pressed("i3", 6), pressed("awesome", 21)});
  EXPECT_THAT(text, AllOf(HasSubstr("- i3, 4 windows, move: only 6 presses count.\n"), Not(HasSubstr("- dwm, 4 windows, move: only"))));
}

TEST(DocumentTest, WhatFailedIsNamedWithItsReason) {
  const std::string text = documentOf({moved("i3", 3), {2, "dwm", 4, "move last", {}, "the keys have no effect"}});
  EXPECT_THAT(text, HasSubstr("- dwm, 4 windows: the keys have no effect. Without: move last (2).\n"));
  EXPECT_THAT(text, Not(HasSubstr("Nothing: every program was measured")));
}

TEST(DocumentTest, PressesWithoutEffectAreCounted) {
  EXPECT_THAT(documentOf({moved("i3", 3), {1, "i3", 4, "move missed", {2}, {}}, {2, "i3", 4, "move missed", {1}, {}}}),
              HasSubstr("- i3, 4 windows, move: 3 presses without effect.\n"));
}

TEST(DocumentTest, ItNamesTheMachineAndLeadsToTheDataAndThePlots) {
  EXPECT_THAT(documentOf({moved("i3", 3)}),
              AllOf(HasSubstr("- system: Debian 12\n"), HasSubstr("](data.csv)"), HasSubstr("](pictures/latency.svg)"),
                    Not(HasSubstr("](pictures/memory.svg)")), HasSubstr("Nothing: every program was measured")));
}

}  // namespace
}  // namespace tilora::bench
