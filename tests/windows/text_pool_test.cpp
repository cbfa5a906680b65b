// Texts stay what and where they are while their pool lives.
#include "windows/text_pool.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace tilora {
namespace {

TEST(TextPool, KeepsCopies) {
  TextPool pool;
  std::string text = "notes";

  const auto kept = pool.keep(text);
  text = "other";

  EXPECT_EQ(kept, "notes");
  EXPECT_EQ(pool.keep(""), "");
}

TEST(TextPool, KeepsManyAndLongTexts) {
  TextPool pool;
  std::vector<std::string> texts;
  std::vector<std::string_view> kept;
  for (std::size_t i = 0; i < 2000; ++i) texts.emplace_back(i % 100 == 99 ? 10'000 : i % 60, static_cast<char>('a' + i % 26));

  kept.reserve(texts.size());
  for (const auto& text : texts) kept.push_back(pool.keep(text));
  const TextPool moved = std::move(pool);

  for (std::size_t i = 0; i < texts.size(); ++i) EXPECT_EQ(kept[i], texts[i]);
}

TEST(SameText, IsEqualTextWhereverItIs) {
  const std::string text = "notes";

  EXPECT_TRUE(isSameText(text, text));
  EXPECT_TRUE(isSameText(text, std::string("notes")));
  EXPECT_FALSE(isSameText(text, std::string_view(text).substr(0, 4)));
  EXPECT_FALSE(isSameText(text, "other"));
}

}  // namespace
}  // namespace tilora
