// Getting bytes from a real server: what is asked, what is followed, and what is given up.
#include "updater/network/http_fetcher.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "app/event_loop.h"
#include "release_site.h"
#include "test_certificate.h"

namespace tilora::updater {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

class Fetch : public testing::Test {
 public:
  app::EventLoop loop;

  Fetched get(HttpFetcher& fetcher, const std::string& address) {
    std::optional<Fetched> result;
    fetcher.fetch(address, [&](Fetched fetched) { result = std::move(fetched); });
    EXPECT_FALSE(result) << "the answer did not wait for the event loop";
    EXPECT_TRUE(loop.runUntil([&] { return result.has_value(); })) << address;
    return result.value_or(Fetched());
  }
  Fetched get(const std::string& address, const FetchLimits& limits = {}, const QSslConfiguration& tls = trusting(testCertificate)) {
    HttpFetcher fetcher(limits, tls);
    return get(fetcher, address);
  }
};

TEST_F(Fetch, AsksWithAPlainGet) {
  ReleaseSite site;
  site.serve("/tilora/updater.json", whole(http("200 OK", "body")));
  EXPECT_EQ(get(site.root() + "/tilora/updater.json").body, "body");
  ASSERT_THAT(site.requests(), SizeIs(1));
  const std::string request = site.requests().front().toLower().toStdString();
  EXPECT_THAT(request, testing::StartsWith("get /tilora/updater.json http/1.1\r\n"));
  EXPECT_THAT(request, AllOf(Not(HasSubstr("cookie:")), Not(HasSubstr("authorization:")), Not(HasSubstr("cache-control:")),
                             Not(HasSubstr("pragma:")), Not(HasSubstr("if-")), Not(HasSubstr("referer:"))));
}

TEST_F(Fetch, AsksAgainWhatItHasJustBeenTold) {
  ReleaseSite site;
  const QByteArray fresh = "Cache-Control: public, max-age=100000\r\nETag: \"1\"\r\nSet-Cookie: a=b; Max-Age=10000\r\n";
  HttpFetcher fetcher;
  site.serve("/", whole(http("200 OK", "first", fresh)));
  EXPECT_EQ(get(fetcher, site.root() + "/").body, "first");
  site.serve("/", whole(http("200 OK", "second", fresh)));
  EXPECT_EQ(get(fetcher, site.root() + "/").body, "second");
  ASSERT_THAT(site.requests(), SizeIs(2));
  EXPECT_EQ(site.requests().front(), site.requests().back()) << "the first answer left something behind";
}

TEST_F(Fetch, TakesTheBodyWhateverTheStatus) {
  ReleaseSite site;
  for (const char* status : {"200 OK",        "201 Created", "203 Other",    "300 Choices", "400 Bad",    "402 Pay",  "403 No",
                             "404 Not Found", "405 No",      "409 Conflict", "410 Gone",    "418 Teapot", "429 Slow", "500 Oops",
                             "501 No",        "502 Bad",     "503 Later",    "504 Late",    "599 Odd",    "999 Odder"}) {
    site.serve("/", whole(http(status, "body")));
    EXPECT_EQ(get(site.root() + "/").body, "body") << status;
  }
}

TEST_F(Fetch, TakesTheBodyOfARefusalAndGivesNoName) {
  ReleaseSite site;
  for (const QByteArray scheme : {R"(Basic realm="x")", R"(Digest realm="x", nonce="y")", "Negotiate", "NTLM"}) {
    site.serve("/", whole(http("401 Unauthorized", "body", "WWW-Authenticate: " + scheme + "\r\n")));
    const auto before = site.requests().size();
    EXPECT_EQ(get(site.root() + "/").body, "body") << scheme.toStdString();
    EXPECT_EQ(site.requests().size(), before + 1) << scheme.toStdString();
    EXPECT_FALSE(site.requests().back().toLower().contains("authorization:")) << scheme.toStdString();
  }
}

TEST_F(Fetch, TakesABodyThatEndsWithTheConnection) {
  ReleaseSite site;
  site.serve("/", whole("HTTP/1.0 200 OK\r\n\r\nbody"));
  EXPECT_EQ(get(site.root() + "/").body, "body");
  site.serve("/", whole("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\nConnection: close\r\n\r\n2\r\nbo\r\n2\r\ndy\r\n0\r\n\r\n"));
  EXPECT_EQ(get(site.root() + "/").body, "body");
}

TEST_F(Fetch, TakesAnEmptyBody) {
  ReleaseSite site;
  site.serve("/", whole(http("200 OK", "")));
  EXPECT_EQ(get(site.root() + "/").body, "");
  site.serve("/", whole("HTTP/1.1 204 No Content\r\nConnection: close\r\n\r\n"));
  EXPECT_EQ(get(site.root() + "/").body, "");
}

TEST_F(Fetch, TakesABodyAsLargeAsTheLimitAndNoLarger) {
  ReleaseSite site;
  const FetchLimits limits;
  site.serve("/", whole(http("200 OK", QByteArray(limits.bodySize, 'x'))));
  EXPECT_EQ(get(site.root() + "/").body, std::string(static_cast<std::size_t>(limits.bodySize), 'x'));
  site.serve("/", whole(http("200 OK", QByteArray(limits.bodySize + 1, 'x'))));
  EXPECT_EQ(get(site.root() + "/").error, "the answer is larger than 65536 bytes.");
}

TEST_F(Fetch, FollowsARedirectionOnTheSameSite) {
  ReleaseSite site;
  site.serve("/there/b", whole(http("200 OK", "body")));
  for (const char* status : {"301 Moved", "302 Found", "303 See", "307 Temporary", "308 Permanent"}) {
    for (const std::string& location : {std::string("/there/b"), std::string("there/b"), site.root() + "/there/b"}) {
      site.serve("/a", redirection(status, QByteArray::fromStdString(location)));
      EXPECT_EQ(get(site.root() + "/a").body, "body") << status << " to " << location;
    }
  }
}

TEST_F(Fetch, FollowsARedirectionToASaferPlaceButNotBack) {
  ReleaseSite plain;
  ReleaseSite secure(servingWith(testCertificate));
  plain.serve("/a", redirection("301 Moved", QByteArray::fromStdString(secure.root() + "/a")));
  secure.serve("/a", whole(http("200 OK", "secure")));
  EXPECT_EQ(get(plain.root() + "/a").body, "secure");
  secure.serve("/b", redirection("301 Moved", QByteArray::fromStdString(plain.root() + "/b")));
  plain.serve("/b", whole(http("200 OK", "plain")));
  const auto before = plain.requests().size();
  const Fetched fetched = get(secure.root() + "/b");
  EXPECT_EQ(fetched.body, std::nullopt);
  EXPECT_EQ(fetched.error, "Insecure redirect");
  EXPECT_EQ(plain.requests().size(), before) << "the less safe place was asked";
}

TEST_F(Fetch, FollowsNoRedirectionToAnythingButHttp) {
  ReleaseSite site;
  for (const char* location :
       {"file:///etc/hostname", "data:,body", "qrc:/x", "ftp://127.0.0.1/x", "javascript:1", "http://", "http:///x", ""}) {
    site.serve("/", redirection("302 Found", location));
    const Fetched fetched = get(site.root() + "/");
    EXPECT_EQ(fetched.body, std::nullopt) << location;
    EXPECT_NE(fetched.error, "") << location;
  }
}

TEST_F(Fetch, GivesUpARedirectionThatGoesInACircle) {
  ReleaseSite site;
  site.serve("/a", redirection("302 Found", "/b"));
  site.serve("/b", redirection("302 Found", "/a"));
  EXPECT_EQ(get(site.root() + "/a").error, "Too many redirects");
  EXPECT_THAT(site.requests(), SizeIs(11));
}

struct Mishap {
  const char* name;
  Answer answer;
};

TEST_F(Fetch, FailsWhenTheAnswerDoesNotComeWhole) {
  ReleaseSite site;
  const QByteArray half = "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf";
  const std::vector<Mishap> mishaps = {
      {"closed half-way", whole(half)},
      {"closed at once", whole("")},
      {"closed in the head", whole("HTTP/1.1 200 OK\r\nContent-Le")},
      {"closed in a chunk", whole("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n64\r\nhalf")},
      {"reset half-way",
       [half](QTcpSocket& socket) {
         socket.write(half);
         socket.flush();
         socket.abort();
       }},
  };
  for (const Mishap& mishap : mishaps) {
    site.serve("/", mishap.answer);
    const Fetched fetched = get(site.root() + "/");
    EXPECT_EQ(fetched.body, std::nullopt) << mishap.name;
    EXPECT_EQ(fetched.error, "Connection closed") << mishap.name;
  }
}

TEST_F(Fetch, FailsWhenTheBodyCannotBeUnpacked) {
  ReleaseSite site;
  const QByteArray packed = qCompress("body").mid(4);
  QByteArray broken = packed;
  broken.back() = static_cast<char>(broken.back() + 1);
  site.serve("/", whole(http("200 OK", packed, "Content-Encoding: deflate\r\n")));
  EXPECT_EQ(get(site.root() + "/").body, "body");
  for (const QByteArray& body : {broken, packed + "more"}) {
    site.serve("/", whole(http("200 OK", body, "Content-Encoding: deflate\r\n")));
    const Fetched fetched = get(site.root() + "/");
    EXPECT_EQ(fetched.body, std::nullopt) << body.toHex().toStdString();
    EXPECT_NE(fetched.error, "") << body.toHex().toStdString();
  }
}

TEST_F(Fetch, FailsWhenWhatComesIsNotHttp) {
  ReleaseSite site;
  for (const char* bytes : {"SSH-2.0-x\r\n\r\n", "HTTP/1.1 abc\r\n\r\n"}) {
    site.serve("/", whole(bytes));
    EXPECT_EQ(get(site.root() + "/").body, std::nullopt) << bytes;
  }
}

TEST_F(Fetch, FailsWhenNobodyListens) {
  const std::string address = ReleaseSite().root() + "/";
  EXPECT_EQ(get(address).error, "Connection refused");
}

TEST_F(Fetch, FailsWhenTheHostIsUnknown) { EXPECT_EQ(get("https://tilora.invalid/").error, "Host tilora.invalid not found"); }

TEST_F(Fetch, GivesUpWhatIsNotThereInTime) {
  ReleaseSite site;
  const FetchLimits limits = {.time = 300ms};
  const std::vector<Mishap> mishaps = {
      {"never", silence()},
      {"head byte by byte", dribble(http("200 OK", "body"), 20ms)},
      {"body byte by byte",
       [](QTcpSocket& socket) {
         socket.write("HTTP/1.1 200 OK\r\nContent-Length: 10000\r\n\r\n");
         dribble(QByteArray(10000, 'x'), 20ms)(socket);
       }},
  };
  for (const Mishap& mishap : mishaps) {
    site.serve("/", mishap.answer);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(get(site.root() + "/", limits).error, "no whole answer within 0.3 seconds.") << mishap.name;
    EXPECT_GE(std::chrono::steady_clock::now() - start, 300ms) << mishap.name;
    EXPECT_TRUE(loop.runUntil([&] { return site.openConnections() == 0; })) << "the connection stays open";
  }
}

TEST_F(Fetch, GivesUpABodyWithoutEnd) {
  ReleaseSite site;
  const QByteArray more(4096, 'x');
  const QByteArray zeros = qCompress(QByteArray(qsizetype{64} << 20U, '\0')).mid(4);
  const std::vector<Mishap> mishaps = {
      {"without length", endless("HTTP/1.1 200 OK\r\n\r\n", more)},
      {"in chunks", endless("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n", "1000\r\n" + more + "\r\n")},
      {"under an error", endless("HTTP/1.1 500 Oops\r\n\r\n", more)},
      {"as long as it says", endless("HTTP/1.1 200 OK\r\nContent-Length: 9000000000000000000\r\n\r\n", more)},
      {"packed", whole(http("200 OK", zeros, "Content-Encoding: deflate\r\n"))},
  };
  for (const Mishap& mishap : mishaps) {
    site.serve("/", mishap.answer);
    const Fetched fetched = get(site.root() + "/");
    EXPECT_EQ(fetched.body, std::nullopt) << mishap.name;
    EXPECT_EQ(fetched.error, "the answer is larger than 65536 bytes.") << mishap.name;
    EXPECT_TRUE(loop.runUntil([&] { return site.openConnections() == 0; })) << "the connection stays open";
  }
}

TEST_F(Fetch, GivesUpAHeadWithoutEnd) {
  ReleaseSite site;
  site.serve("/", endless("HTTP/1.1 200 OK\r\n", "X: " + QByteArray(4096, 'x') + "\r\n"));
  EXPECT_EQ(get(site.root() + "/", {.time = 300ms}).body, std::nullopt);
  site.serve("/", endless("HTTP/1.1 200 OK\r\nX: ", QByteArray(4096, 'x')));
  EXPECT_EQ(get(site.root() + "/", {.time = 300ms}).body, std::nullopt);
}

TEST_F(Fetch, AsksNobodyWhoseCertificateIsNotGood) {
  ReleaseSite site(servingWith(testCertificate));
  ReleaseSite expired(servingWith(expiredCertificate));
  for (ReleaseSite* server : {&site, &expired}) server->serve("/", whole(http("200 OK", "body")));
  const std::string byNumber = "https://127.0.0.1:" + std::to_string(site.port()) + "/";
  EXPECT_EQ(get(site.root() + "/").body, "body");
  EXPECT_EQ(get(byNumber).body, std::nullopt) << "a certificate for another host was taken";
  EXPECT_EQ(get(site.root() + "/", {}, QSslConfiguration::defaultConfiguration()).body, std::nullopt) << "a stranger's word was taken";
  EXPECT_EQ(get(expired.root() + "/", {}, trusting(expiredCertificate)).body, std::nullopt) << "an old certificate was taken";
  EXPECT_THAT(get(byNumber).error, HasSubstr("SSL handshake failed"));
  EXPECT_THAT(site.requests(), SizeIs(1));
  EXPECT_THAT(expired.requests(), SizeIs(0));
}

TEST_F(Fetch, AsksNobodyWhoSpeaksNoTls) {
  ReleaseSite site;
  site.serve("/", whole(http("200 OK", "body")));
  EXPECT_EQ(get("https://127.0.0.1:" + std::to_string(site.port()) + "/", {.time = 300ms}).body, std::nullopt);
}

TEST_F(Fetch, FetchesNothingButHttp) {
  for (const char* address : {"file:///etc/hostname", "data:,body", "ftp://127.0.0.1/x", "qrc:/x", "tilora/updater.json", "http:///x",
                              "https:", "", "http://a b/"}) {
    const Fetched fetched = get(address);
    EXPECT_EQ(fetched.body, std::nullopt) << address;
    EXPECT_EQ(fetched.error, "unsupported address.") << address;
  }
}

TEST_F(Fetch, EndsWithItsFetcher) {
  ReleaseSite site;
  site.serve("/", silence());
  bool answered = false;
  {
    HttpFetcher fetcher;
    fetcher.fetch(site.root() + "/", [&](const Fetched&) { answered = true; });
    ASSERT_TRUE(loop.runUntil([&] { return site.requests().size() == 1; }));
  }
  EXPECT_TRUE(loop.runUntil([&] { return site.openConnections() == 0; }));
  EXPECT_FALSE(answered);
}

}  // namespace
}  // namespace tilora::updater
