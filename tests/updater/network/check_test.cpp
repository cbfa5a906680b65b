// A whole check against a real server: what it prints, whether it asks the user, and whether it writes the date.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/event_loop.h"
#include "recording_surroundings.h"
#include "release_site.h"
#include "support/named_case.h"
#include "test_certificate.h"
#include "updater/network/http_fetcher.h"
#include "updater/releasewatch.h"

namespace tilora::updater {
namespace {

using namespace std::chrono_literals;

/// What is left of a check for the user: lines, the alert and the date. The address of the site is written SITE.
using Trace = std::vector<std::string>;

struct SiteCase {
  std::string name;
  Answer feed;
  /// What follows the first line, which is always the same.
  Trace trace;
};

std::string feedOf(const std::string& version, const std::string& file = "Tilora.zip") {
  return R"({"product":"Tilora","version":")" + version + R"(","file":")" + file + "\"}";
}

Answer page(const QByteArray& status, const std::string& body) { return whole(http(status, QByteArray::fromStdString(body))); }

Trace refusal(const std::string& why) { return {"print Releasewatch: " + why}; }

Trace offer(const std::string& version, const std::string& file = "Tilora.zip") {
  return {"show Update Available | A new version (" + version + ") is available. Would you like to download it? | Download | Cancel",
          "open SITE/tilora/" + file, "date"};
}

const Trace upToDate = {"print Releasewatch: application 1.3 already up to date.", "date"};

/// The loop, a program of version 1.3, and a user who always presses the first button.
class CheckOverTheNetwork : public testing::Test {
 public:
  app::EventLoop loop;

  Trace check(const std::string& root, const FetchLimits& limits = {}) {
    RecordingSurroundings desk;
    HttpFetcher fetcher(limits, trusting(testCertificate));
    const Surroundings recorded = desk.with("1.3");
    const auto watch = std::make_shared<Releasewatch>(root + "/tilora", 5,
                                                      Surroundings{.clock = recorded.clock,
                                                                   .checkDate = recorded.checkDate,
                                                                   .fetcher = fetcher,
                                                                   .alert = recorded.alert,
                                                                   .browser = recorded.browser,
                                                                   .output = recorded.output,
                                                                   .localVersion = recorded.localVersion});
    std::weak_ptr<Releasewatch> running = watch;
    watch->checkForUpdate();
    EXPECT_TRUE(loop.runUntil([&] { return desk.alertDone || running.use_count() == 1; })) << "the check does not end";
    if (desk.alertDone) desk.alertEnds(AlertAnswer::firstButton);
    EXPECT_EQ(running.use_count(), 1) << "somebody holds the check after its end";
    EXPECT_EQ(desk.date.has_value(), !desk.done.empty() && desk.done.back() == "date");
    for (std::string& line : desk.done) {
      const auto at = line.find(root);
      if (at != std::string::npos) line.replace(at, root.size(), "SITE");
    }
    EXPECT_EQ(desk.done.front(), "print Releasewatch: checking for update at SITE/tilora...");
    return {desk.done.begin() + 1, desk.done.end()};
  }
};

class CheckOf : public CheckOverTheNetwork, public testing::WithParamInterface<SiteCase> {};

TEST_P(CheckOf, EndsTheSameWayOverHttpAndHttps) {
  ReleaseSite plain;
  ReleaseSite secure(servingWith(testCertificate));
  for (ReleaseSite* site : {&plain, &secure}) {
    site->serve("/tilora/updater.json", GetParam().feed);
    site->serve("/elsewhere.json", page("200 OK", feedOf("1.4")));
    site->serve("/circle", redirection("302 Found", "/tilora/updater.json"));
    EXPECT_EQ(check(site->root()), GetParam().trace) << site->root();
  }
}

INSTANTIATE_TEST_SUITE_P(
    AFeed, CheckOf,
    testing::Values(SiteCase{"of_the_same_version", page("200 OK", feedOf("1.3")), upToDate},
                    SiteCase{"of_a_newer_version", page("200 OK", feedOf("1.4")), offer("1.4")},
                    SiteCase{"of_a_version_with_more_digits", page("200 OK", feedOf("1.10")), offer("1.10")},
                    SiteCase{"of_an_older_version", page("200 OK", feedOf("1.2")), offer("1.2")},
                    SiteCase{"of_an_empty_version", page("200 OK", feedOf("")), offer("")},
                    SiteCase{"with_more_keys", page("200 OK", R"({"a":[{}],"file":"x","product":"","version":"1.4","z":null})"),
                             offer("1.4", "x")},
                    SiteCase{"under_404", page("404 Not Found", feedOf("1.4")), offer("1.4")},
                    SiteCase{"under_500", page("500 Oops", feedOf("1.4")), offer("1.4")},
                    SiteCase{"under_503_of_the_same_version", page("503 Later", feedOf("1.3")), upToDate},
                    SiteCase{"after_a_redirection", redirection("302 Found", "/elsewhere.json"), offer("1.4")},
                    SiteCase{"with_a_mark_in_front", page("200 OK", "\xEF\xBB\xBF" + feedOf("1.4")), offer("1.4")},
                    SiteCase{"with_tags_in_the_version", page("200 OK", feedOf("<b>1.4</b>")), offer("<b>1.4</b>")},
                    SiteCase{"with_spaces_in_the_file", page("200 OK", feedOf("1.4", "Tilora 1.4 (x86).zip")),
                             offer("1.4", "Tilora%201.4%20(x86).zip")},
                    SiteCase{"with_dots_in_the_file", page("200 OK", feedOf("1.4", "../../x")), offer("1.4", "../../x")},
                    SiteCase{"with_a_scheme_in_the_file", page("200 OK", feedOf("1.4", "javascript:x")), offer("1.4", "javascript:x")},
                    SiteCase{"with_a_host_in_the_file", page("200 OK", feedOf("1.4", "//b.invalid/x")), offer("1.4", "//b.invalid/x")}),
    test::caseName);

INSTANTIATE_TEST_SUITE_P(
    NoFeed, CheckOf,
    testing::Values(
        SiteCase{"without_product", page("200 OK", R"({"version":"1.4","file":"x"})"), refusal("the feed has no \"product\".")},
        SiteCase{"without_version", page("200 OK", R"({"product":"T","file":"x"})"), refusal("the feed has no \"version\".")},
        SiteCase{"without_file", page("200 OK", R"({"product":"T","version":"1.4"})"), refusal("the feed has no \"file\".")},
        SiteCase{"with_a_number_for_a_product", page("200 OK", R"({"product":1,"version":"1.4","file":"x"})"),
                 refusal("\"product\" of the feed is not a string.")},
        SiteCase{"with_a_number_for_a_version", page("200 OK", R"({"product":"T","version":1.4,"file":"x"})"),
                 refusal("\"version\" of the feed is not a string.")},
        SiteCase{"with_null_for_a_file", page("200 OK", R"({"product":"T","version":"1.4","file":null})"),
                 refusal("\"file\" of the feed is not a string.")},
        SiteCase{"but_a_list", page("200 OK", "[]"), refusal("the feed is not a JSON object.")},
        SiteCase{"but_text", page("200 OK", "1.4"), refusal("the feed is not a JSON object.")},
        SiteCase{"but_a_page_under_500", page("500 Oops", "<html>Oops</html>"), refusal("the feed is not JSON, from byte 1 on.")},
        SiteCase{"but_a_page_under_404", page("404 Not Found", "<html></html>"), refusal("the feed is not JSON, from byte 1 on.")},
        SiteCase{"but_nothing", page("200 OK", ""), refusal("the feed is empty.")},
        SiteCase{"but_no_content", whole("HTTP/1.1 204 No Content\r\nConnection: close\r\n\r\n"), refusal("the feed is empty.")},
        SiteCase{"but_half_of_one", whole("HTTP/1.1 200 OK\r\nContent-Length: 60\r\n\r\n{\"product\":"), refusal("Connection closed")},
        SiteCase{"but_the_start_of_one", whole("HTTP/1.0 200 OK\r\n\r\n{\"product\":"), refusal("the feed is not JSON, from byte 12 on.")},
        SiteCase{"but_a_circle", redirection("302 Found", "/circle"), refusal("Too many redirects")},
        SiteCase{"but_a_body_without_end", endless("HTTP/1.1 200 OK\r\n\r\n", QByteArray(4096, ' ')),
                 refusal("the answer is larger than 65536 bytes.")}),
    test::caseName);

TEST_F(CheckOverTheNetwork, GivesUpASiteThatNeverAnswers) {
  ReleaseSite site;
  site.serve("/tilora/updater.json", silence());
  EXPECT_EQ(check(site.root(), {.time = 200ms}), refusal("no whole answer within 0.2 seconds."));
}

TEST_F(CheckOverTheNetwork, IsNotLedFromHttpsToHttp) {
  ReleaseSite plain;
  ReleaseSite secure(servingWith(testCertificate));
  plain.serve("/x", page("200 OK", feedOf("1.4")));
  secure.serve("/tilora/updater.json", redirection("302 Found", QByteArray::fromStdString(plain.root() + "/x")));
  EXPECT_EQ(check(secure.root()), refusal("Insecure redirect"));
}

TEST_F(CheckOverTheNetwork, DoesNotTrustACertificateThatIsNotGood) {
  ReleaseSite site(servingWith(expiredCertificate));
  site.serve("/tilora/updater.json", page("200 OK", feedOf("1.4")));
  const Trace trace = check(site.root());
  ASSERT_EQ(trace.size(), 1U);
  EXPECT_THAT(trace.front(), testing::StartsWith("print Releasewatch: SSL handshake failed"));
}

TEST_F(CheckOverTheNetwork, EndsWithoutAWordWhenTheAddressIsNone) {
  RecordingSurroundings desk;
  std::make_shared<Releasewatch>("https://[tilora", 5, desk.with("1.3"))->checkForUpdate();
  EXPECT_EQ(desk.done, Trace{"print Releasewatch: checking for update at https://[tilora..."});
}

}  // namespace
}  // namespace tilora::updater
