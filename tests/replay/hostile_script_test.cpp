// Scripts that cannot be read: each gets an error with its line number, and the trace of the lines before it.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "replay/replay.h"

namespace tilora::replay {
namespace {

struct Outcome {
  bool ran = false;
  std::string trace;
  std::string errors;
};

Outcome replayed(const std::string& text) {
  std::istringstream script(text);
  std::ostringstream trace;
  std::ostringstream errors;
  const bool ran = replayScript(script, "script", trace, errors);
  return {ran, trace.str(), errors.str()};
}

/// A desktop with a screen, an application 100 with window 1, and an application 200.
const std::string desktopLines = R"({"do":"screen","id":1,"frame":[0,0,1440,900],"visible":[0,0,1440,875]}
{"do":"app","pid":100}
{"do":"window","id":1,"pid":100}
{"do":"app","pid":200}
)";
constexpr int desktopLineCount = 4;

struct BadLine {
  std::string line;
  std::string reason;
};

std::ostream& operator<<(std::ostream& out, const BadLine& bad) { return out << bad.line; }

class HostileScript : public testing::TestWithParam<BadLine> {};

TEST_P(HostileScript, ABadLineIsRefusedWithItsNumber) {
  const auto outcome = replayed(desktopLines + "\n# a comment counts as a line\n" + GetParam().line + "\n{\"do\":\"start\"}\n");

  EXPECT_FALSE(outcome.ran);
  EXPECT_EQ(outcome.errors, "script:" + std::to_string(desktopLineCount + 3) + ": " + GetParam().reason + "\n");
  EXPECT_EQ(outcome.trace, "");
}

const std::string wholeNumber32 = "must be a whole number from -2147483648 to 2147483647";
const std::string unsigned32 = "must be a whole number from 0 to 4294967295";
const std::string unsigned64 = "must be a whole number from 0 to 18446744073709551615";
const std::string rectangle = "must be a rectangle [x, y, width, height]";
const std::string attributeValue = R"(must be a string, a number, true, false, {"point":[x,y]}, {"size":[w,h]} or {"other":true})";

INSTANTIATE_TEST_SUITE_P(
    Json, HostileScript,
    testing::Values(BadLine{"{", "this is not valid JSON, from byte 2 on"}, BadLine{"}", "this is not valid JSON, from byte 1 on"},
                    BadLine{R"({"do":"state"} {})", "this is not valid JSON, from byte 16 on"},
                    BadLine{R"({"do":"state",})", "this is not valid JSON, from byte 15 on"},
                    BadLine{"{'do':'state'}", "this is not valid JSON, from byte 2 on"},
                    BadLine{"{\"do\":\"\xff\"}", "this is not valid JSON, from byte 8 on"},
                    BadLine{R"({"do":"\ud800"})", "this is not valid JSON, from byte 14 on"},
                    BadLine{R"({"do":"advance","ms":NaN})", "this is not valid JSON, from byte 22 on"},
                    BadLine{R"({"do":"advance","ms":1e999})", "a number is too large"},
                    BadLine{std::string("{\"do\":\"state\"}\0{", 16), "the line contains a null character"},
                    BadLine{std::string(100000, '['), "this is not valid JSON, from byte 100001 on"},
                    BadLine{std::string(100000, '[') + std::string(100000, ']'), "a line must be a JSON object"},
                    BadLine{"[]", "a line must be a JSON object"}, BadLine{"\"state\"", "a line must be a JSON object"},
                    BadLine{"null", "a line must be a JSON object"}, BadLine{" # indented", "this is not valid JSON, from byte 2 on"}));

INSTANTIATE_TEST_SUITE_P(Do, HostileScript,
                         testing::Values(BadLine{"{}", "\"do\" is missing"}, BadLine{R"({"Do":"state"})", "\"do\" is missing"},
                                         BadLine{R"({"do":1})", "\"do\" must be a string"},
                                         BadLine{R"({"do":null})", "\"do\" must be a string"},
                                         BadLine{R"({"do":"fly"})", "there is no line \"fly\""},
                                         BadLine{R"({"do":"two\nlines"})", R"(there is no line "two\nlines")"},
                                         BadLine{R"({"do":"State"})", "there is no line \"State\""},
                                         BadLine{R"({"do":""})", "there is no line \"\""}));

INSTANTIATE_TEST_SUITE_P(
    Screens, HostileScript,
    testing::Values(BadLine{R"({"do":"screen","frame":[0,0,1,1],"visible":[0,0,1,1]})", "\"id\" is missing"},
                    BadLine{R"({"do":"screen","id":"1","frame":[0,0,1,1],"visible":[0,0,1,1]})", "\"id\" " + unsigned64},
                    BadLine{R"({"do":"screen","id":2,"visible":[0,0,1,1]})", "\"frame\" is missing"},
                    BadLine{R"({"do":"screen","id":2,"frame":[0,0,1],"visible":[0,0,1,1]})", "\"frame\" " + rectangle},
                    BadLine{R"({"do":"screen","id":2,"frame":[0,0,1,"1"],"visible":[0,0,1,1]})", "\"frame\" " + rectangle},
                    BadLine{R"({"do":"screen","id":2,"frame":[0,0,1,1],"visible":null})", "\"visible\" " + rectangle},
                    BadLine{R"({"do":"screen","id":2,"frame":[0,0,1,1],"visible":[0,0,1,1],"number":1.5})",
                            "\"number\" must be a whole number of at most 64 bits"},
                    BadLine{R"({"do":"screen","id":2,"frame":[0,0,1,1],"visible":[0,0,1,1],"number":18446744073709551616})",
                            "\"number\" must be a whole number of at most 64 bits"},
                    BadLine{R"({"do":"removeScreen","id":2})", "there was never a screen 2"},
                    BadLine{R"({"do":"removeScreen","id":null})", "\"id\" " + unsigned64},
                    BadLine{R"({"do":"mainScreen"})", "\"id\" is missing"},
                    BadLine{R"({"do":"mainScreen","id":2})", "there was never a screen 2"}));

INSTANTIATE_TEST_SUITE_P(
    Applications, HostileScript,
    testing::Values(BadLine{R"({"do":"app"})", "\"pid\" is missing"}, BadLine{R"({"do":"app","pid":1.5})", "\"pid\" " + wholeNumber32},
                    BadLine{R"({"do":"app","pid":2147483648})", "\"pid\" " + wholeNumber32},
                    BadLine{R"({"do":"app","pid":true})", "\"pid\" " + wholeNumber32},
                    BadLine{R"({"do":"app","pid":100})", "there already is an application 100"},
                    BadLine{R"({"do":"app","pid":3,"bundle":3})", "\"bundle\" must be a string"},
                    BadLine{R"({"do":"app","pid":3,"name":["n"]})", "\"name\" must be a string"},
                    BadLine{R"({"do":"app","pid":3,"policy":"Regular"})",
                            R"("policy" must be one of "regular", "accessory", "prohibited")"},
                    BadLine{R"({"do":"app","pid":3,"policy":null})", R"("policy" must be one of "regular", "accessory", "prohibited")"},
                    BadLine{R"({"do":"app","pid":3,"hidden":1})", "\"hidden\" must be true or false"},
                    BadLine{R"({"do":"app","pid":3,"ownProcess":"yes"})", "\"ownProcess\" must be true or false"},
                    BadLine{R"({"do":"quit","pid":3})", "there was never an application 3"},
                    BadLine{R"({"do":"quit","pid":100,"linger":0})", "\"linger\" must be true or false"},
                    BadLine{R"({"do":"windowsUnreadable","pid":3,"value":true})", "there was never an application 3"},
                    BadLine{R"({"do":"windowsUnreadable","pid":100})", "\"value\" is missing"},
                    BadLine{R"({"do":"hidden","pid":3,"value":true})", "there was never an application 3"},
                    BadLine{R"({"do":"hidden","pid":100,"value":"true"})", "\"value\" must be true or false"},
                    BadLine{R"({"do":"front"})", "\"pid\" is missing"},
                    BadLine{R"({"do":"front","pid":3})", "there was never an application 3"},
                    BadLine{R"({"do":"front","pid":100,"window":9})", "there was never a window 9"},
                    BadLine{R"({"do":"front","pid":200,"window":1})", "window 1 belongs to another application"},
                    BadLine{R"({"do":"front","pid":null,"window":1})", "window 1 belongs to another application"}));

INSTANTIATE_TEST_SUITE_P(
    Windows, HostileScript,
    testing::Values(
        BadLine{R"({"do":"window","pid":100})", "\"id\" is missing"},
        BadLine{R"({"do":"window","id":-1,"pid":100})", "\"id\" " + unsigned64}, BadLine{R"({"do":"window","id":2})", "\"pid\" is missing"},
        BadLine{R"({"do":"window","id":2,"pid":3})", "there was never an application 3"},
        BadLine{R"({"do":"window","id":1,"pid":100})", "there already is a window 1"},
        BadLine{R"({"do":"window","id":2,"pid":100,"attributes":[]})", "\"attributes\" must be an object of attributes"},
        BadLine{R"({"do":"window","id":2,"pid":100,"attributes":{"AXTitle":null}})", "\"AXTitle\" " + attributeValue},
        BadLine{R"({"do":"window","id":2,"pid":100,"attributes":{"AXSize":{"size":[1]}}})", "\"AXSize\" must be a size [width, height]"},
        BadLine{R"({"do":"window","id":2,"pid":100,"attributes":{"AXPosition":{"point":1}}})", "\"AXPosition\" must be a point [x, y]"},
        BadLine{R"({"do":"window","id":2,"pid":100,"attributes":{"AXTitle":{"other":false}}})", "\"AXTitle\" " + attributeValue},
        BadLine{R"({"do":"window","id":2,"pid":100,"settable":"AXSize"})", "\"settable\" must be an array of attribute names"},
        BadLine{R"({"do":"window","id":2,"pid":100,"settable":[1]})", "\"settable\" must be an array of attribute names"},
        BadLine{R"({"do":"window","id":2,"pid":100,"hash":18446744073709551616})", "\"hash\" " + unsigned64},
        BadLine{R"({"do":"window","id":2,"pid":100,"hash":-1})", "\"hash\" " + unsigned64},
        BadLine{R"({"do":"window","id":2,"pid":100,"server":[]})", "\"server\" must be an object or null"},
        BadLine{R"({"do":"window","id":2,"pid":100,"server":{"pid":"100"}})", "\"pid\" " + wholeNumber32},
        BadLine{R"({"do":"window","id":2,"pid":100,"server":{"bounds":[1,2]}})", "\"bounds\" " + rectangle},
        BadLine{R"({"do":"window","id":2,"pid":100,"listed":"no"})", "\"listed\" must be true or false"},
        BadLine{R"({"do":"window","id":2,"pid":100,"at":2})", "\"at\" must be at most 1, the number of windows there"},
        BadLine{R"({"do":"window","id":2,"pid":100,"at":-1})", "\"at\" " + unsigned64},
        BadLine{R"({"do":"window","id":2,"pid":100,"attributes":{"a\u0007\nb":null}})", R"("a\u0007\nb" )" + attributeValue},
        BadLine{R"({"do":"close","id":2})", "there was never a window 2"},
        BadLine{R"({"do":"attribute","id":2,"name":"AXTitle","value":"t"})", "there was never a window 2"},
        BadLine{R"({"do":"attribute","id":1,"value":"t"})", "\"name\" is missing"},
        BadLine{R"({"do":"attribute","id":1,"name":"AXTitle"})", "\"value\" is missing"},
        BadLine{R"({"do":"attribute","id":1,"name":"AXTitle","value":["t"]})", "\"value\" " + attributeValue},
        BadLine{R"({"do":"settable","id":1,"name":"AXSize","value":1})", R"("value" must be true, false or "error")"},
        BadLine{R"({"do":"settable","id":1,"name":7,"value":true})", "\"name\" must be a string"},
        BadLine{R"({"do":"settable","id":2,"name":"AXSize","value":true})", "there was never a window 2"}));

INSTANTIATE_TEST_SUITE_P(
    Services, HostileScript,
    testing::Values(
        BadLine{R"({"do":"mouse","buttons":-1})", "\"buttons\" " + unsigned64}, BadLine{R"({"do":"mouse"})", "\"buttons\" is missing"},
        BadLine{R"({"do":"trust","value":null})", "\"value\" must be true or false"},
        BadLine{R"({"do":"defaults","value":1})", "\"key\" is missing"}, BadLine{R"({"do":"defaults","key":"k"})", "\"value\" is missing"},
        BadLine{R"({"do":"defaults","key":"k","value":{"data":1}})",
                R"("value" must be a string, a number, true, false or {"data":string})"},
        BadLine{R"({"do":"defaults","key":"k","value":[]})", R"("value" must be a string, a number, true, false or {"data":string})"},
        BadLine{R"({"do":"login"})", "\"status\" is missing"},
        BadLine{R"({"do":"login","status":4})", "\"status\" must be a status from 0 to 3"},
        BadLine{R"({"do":"login","status":0,"statusAfterRegister":null})", "\"statusAfterRegister\" must be a status from 0 to 3"},
        BadLine{R"({"do":"login","status":0,"registerError":false})", "\"registerError\" must be a string"},
        BadLine{R"({"do":"hotKeyTaken","keyCode":33})", "\"modifiers\" is missing"},
        BadLine{R"({"do":"hotKeyTaken","keyCode":4294967296,"modifiers":0})", "\"keyCode\" " + unsigned32}));

INSTANTIATE_TEST_SUITE_P(
    Controller, HostileScript,
    testing::Values(BadLine{R"({"do":"advance"})", "\"ms\" is missing"}, BadLine{R"({"do":"advance","ms":-1})", "\"ms\" must be 0 or more"},
                    BadLine{R"({"do":"advance","ms":9223372036854775807})", "\"ms\" goes beyond the end of time"},
                    BadLine{R"({"do":"notify","event":"woke"})",
                            R"("event" must be one of "launched", "terminated", "activated", "spaceChanged", "screensChanged")"},
                    BadLine{R"({"do":"hotKey","keyCode":-1,"modifiers":0})", "\"keyCode\" " + unsigned32},
                    BadLine{R"({"do":"menu","row":1})", "\"row\" must be from 2 to 6"},
                    BadLine{R"({"do":"menu","row":7})", "\"row\" must be from 2 to 6"},
                    BadLine{R"({"do":"menu","row":"2"})", "\"row\" " + wholeNumber32},
                    BadLine{R"({"do":"padding","value":"12"})", "\"value\" must be a number"},
                    BadLine{R"({"do":"startOnLogin"})", "\"value\" is missing"},
                    BadLine{R"({"do":"record","action":"moveUp"})",
                            R"("action" must be one of "moveLeft", "moveRight", "centerOrFullscreen", "floatCenter")"},
                    BadLine{R"({"do":"key","keyCode":1})", "\"flags\" is missing"},
                    BadLine{R"({"do":"requestAccess","prompt":1})", "\"prompt\" must be true or false"}));

TEST(HostileScript, TheTraceOfTheLinesBeforeTheBadOneIsWritten) {
  const auto outcome = replayed("{\"do\":\"key\",\"keyCode\":0,\"flags\":0}\n{\"do\":\"start\"}\n{\"do\":\"start\"}\n");

  EXPECT_FALSE(outcome.ran);
  EXPECT_TRUE(outcome.trace.starts_with("{\"ms\":0,\"key\":\"passed\"}\n{\"ms\":0,\"call\":\"registerHotKey\"")) << outcome.trace;
  EXPECT_EQ(outcome.errors, "script:3: \"start\" can be there only once\n");
}

TEST(HostileScript, OnlyOneApplicationIsTheOwnProcessAndItComesBeforeTheStart) {
  EXPECT_EQ(replayed("{\"do\":\"app\",\"pid\":5,\"ownProcess\":true}\n{\"do\":\"app\",\"pid\":6,\"ownProcess\":true}\n").errors,
            "script:2: only one application can be \"ownProcess\"\n");
  EXPECT_EQ(replayed("{\"do\":\"start\"}\n{\"do\":\"app\",\"pid\":6,\"ownProcess\":true}\n").errors,
            "script:2: \"ownProcess\" must come before \"start\"\n");
}

TEST(HostileScript, AnIdThatIsGoneIsNoError) {
  const auto outcome = replayed(desktopLines + R"({"do":"quit","pid":100}
{"do":"quit","pid":100}
{"do":"close","id":1}
{"do":"attribute","id":1,"name":"AXTitle","value":"t"}
{"do":"settable","id":1,"name":"AXSize","value":"error"}
{"do":"hidden","pid":100,"value":true}
{"do":"windowsUnreadable","pid":100,"value":true}
{"do":"front","pid":100,"window":1}
{"do":"window","id":2,"pid":100}
{"do":"close","id":2}
{"do":"removeScreen","id":1}
{"do":"removeScreen","id":1}
{"do":"mainScreen","id":1}
{"do":"start"}
{"do":"advance","ms":1000}
)");

  EXPECT_TRUE(outcome.ran) << outcome.errors;
}

TEST(HostileScript, AnEmptyScriptGivesAnEmptyTrace) {
  EXPECT_TRUE(replayed("").ran);
  EXPECT_EQ(replayed("\n \t\r\n# nothing\n").trace, "");
  EXPECT_TRUE(replayed("\n \t\r\n# nothing\n").ran);
}

TEST(HostileScript, LinesMayEndAsOnOtherSystemsOrNotAtAll) {
  EXPECT_EQ(replayed("{\"do\":\"key\",\"keyCode\":0,\"flags\":0}\r\n{\"do\":\"key\",\"keyCode\":0,\"flags\":0}").trace,
            "{\"ms\":0,\"key\":\"passed\"}\n{\"ms\":0,\"key\":\"passed\"}\n");
}

TEST(HostileScript, MembersThatAreNotKnownArePassedOver) {
  EXPECT_EQ(replayed("{\"do\":\"key\",\"keyCode\":0,\"flags\":0,\"comment\":{\"by\":[null]}}\n").trace, "{\"ms\":0,\"key\":\"passed\"}\n");
}

TEST(HostileScript, WholeNumbersMayBeWrittenWithAPointOrAnExponent) {
  EXPECT_EQ(replayed("{\"do\":\"advance\",\"ms\":2.5e2}\n{\"do\":\"key\",\"keyCode\":0.0,\"flags\":0}\n").trace,
            "{\"ms\":250,\"key\":\"passed\"}\n");
}

/// A managed window of application 100 whose number is `number`, then a pass.
std::string passOverWindow(const std::string& members) {
  return R"({"do":"screen","id":1,"frame":[0,0,1440,900],"visible":[0,0,1440,875]}
{"do":"app","pid":100}
{"do":"window","id":1,"pid":100,)" +
         members + R"(}
{"do":"start"}
{"do":"advance","ms":250}
)";
}

TEST(FatalErrorDeathTest, AHashBeyondTheSignedRangeEndsTheProcess) {
  EXPECT_DEATH(replayed(passOverWindow(R"("hash":9223372036854775808,"attributes":{"AXRole":"AXWindow"})")), "");
  EXPECT_TRUE(replayed(passOverWindow(R"("hash":9223372036854775807,"attributes":{"AXRole":"AXWindow"})")).ran);
}

TEST(FatalErrorDeathTest, AskingTheWindowServerForANumberBeyond32BitsEndsTheProcess) {
  EXPECT_DEATH(replayed(passOverWindow(R"("settable":["AXPosition"],"attributes":{"AXRole":"AXWindow","AXWindowNumber":4294967296})")), "");
  EXPECT_DEATH(replayed(passOverWindow(R"("settable":["AXPosition"],"attributes":{"AXRole":"AXWindow","AXWindowNumber":-1})")), "");
  EXPECT_TRUE(replayed(passOverWindow(R"("settable":["AXPosition"],"attributes":{"AXRole":"AXWindow","AXWindowNumber":4294967295})")).ran);
}

TEST(FatalErrorDeathTest, AScreenWithoutNumberWhoseFrameIsBeyondWholeNumbersEndsTheProcess) {
  const auto screenAt = [](const std::string& x) {
    return R"({"do":"screen","id":1,"visible":[0,0,1440,875],"frame":[)" + x + R"(,0,1440,900]}
{"do":"app","pid":100}
{"do":"window","id":1,"pid":100,"attributes":{"AXRole":"AXWindow"}}
{"do":"start"}
{"do":"advance","ms":250}
)";
  };
  EXPECT_DEATH(replayed(screenAt("1e19")), "");
  EXPECT_TRUE(replayed(screenAt("1e18")).ran);
}

}  // namespace
}  // namespace tilora::replay
