#include "core/text.h"

#include <gtest/gtest.h>
#include <limits>

#include "core/fixed_string.h"
#include "core/game_random.h"
#include "core/readable_text.h"
#include "core/typed_number.h"

namespace mw {
namespace {

TEST(Text, ComparesAsUnsignedLowerCaseBytes) {
  const struct {
    const char *a, *b;
    int order;
  } kRows[] = {{"Levels/Island", "levels/ISLAND", 0},
               {"a_b", "aab", -1},  // '_' sorts before letters, also capital ones
               {"A_B", "AAB", -1},
               {"\xC4", "z", 1},  // bytes above 127 sort after ASCII
               {"ab", "abc", -1},
               {"@[", "`{", -1}};  // neighbours of the letters
  for (const auto& row : kRows) {
    const int order = CompareNoCase(row.a, row.b);
    EXPECT_EQ((order > 0) - (order < 0), row.order) << row.a;
    EXPECT_EQ(EqualNoCase(row.a, row.b), row.order == 0) << row.a;
  }
}

TEST(Text, TokenizerChangesSeparatorsBetweenCalls) {
  Tokenizer tokens("  water.texLayer1  texture/water1 rest\n");
  EXPECT_EQ(tokens.Next(" /"), "water.texLayer1");
  EXPECT_EQ(tokens.Next(" \n\r"), "texture/water1");
  EXPECT_EQ(tokens.Next(" \n\r"), "rest");
  EXPECT_EQ(tokens.Next(" \n\r"), std::nullopt);
  EXPECT_EQ(tokens.Next(" "), std::nullopt) << "the end stays the end";
}

TEST(Text, NumbersAreReadFromTheirLeadingCharactersAndLimited) {
  using Int = std::numeric_limits<std::int32_t>;
  constexpr float kMost = std::numeric_limits<float>::max();
  EXPECT_EQ(ParseInt(std::nullopt), 0);
  const std::pair<const char*, std::int32_t> kIntegers[] = {{" -12abc", -12},
                                                            {"x", 0},
                                                            {"99999999999999999999", Int::max()},
                                                            {"-99999999999", Int::min()}};
  for (const auto& [text, value] : kIntegers) EXPECT_EQ(ParseInt(text), value) << text;
  const std::pair<const char*, float> kFloats[] = {
      {"0.75x", 0.75f}, {"0x10", 16}, {"nan", 0}, {"inf", kMost}, {"-1e999", -kMost}};
  for (const auto& [text, value] : kFloats) EXPECT_EQ(ParseFloat(text), value) << text;
}

TEST(TypedNumber, IsTheWholeTextOrNone) {
  EXPECT_EQ(TypedInteger(" -12\t"), -12);
  EXPECT_EQ(TypedInteger("+5"), 5);
  EXPECT_EQ(TypedFloat("+0.25 "), 0.25f);
  for (const char* text : {"", " ", "+-5", "++5", "1x", "1 2", "99999999999"}) {
    EXPECT_FALSE(TypedInteger(text)) << text;
  }
  for (const char* text : {"", "inf", "-nan", "1e99", "0,5"}) EXPECT_FALSE(TypedFloat(text));
}

TEST(FixedString, CutsWhatDoesNotFitAndSaysSo) {
  FixedString<4> text;
  EXPECT_TRUE(text.Assign("abc"));
  EXPECT_FALSE(text.Assign("abcd"));
  EXPECT_EQ(text, "abc");
  text = text.View().substr(1);  // from itself
  EXPECT_EQ(text, "bc");
}

TEST(GameRandom, IsTheGamesOwnSequence) {
  SeedGameRandom(1);
  for (const int next : {41, 18467, 6334}) EXPECT_EQ(GameRandom(), next);
}

TEST(Text, NamesOfOlderToolsAreShownInLettersAndUtf8StaysAsItIs) {
  const std::pair<std::string_view, std::string_view> kRows[] = {
      {"Bunker_01", "Bunker_01"},
      {"Mühle \u20AC \U0001F333", "Mühle \u20AC \U0001F333"},
      {"M\xFChle \xC9t\xE9 \x80\x9F", "Mühle Été €Ÿ"},
      {"Caf\xC3\xA9 and Caf\xE9", "Café and Café"},
      {"\xC0\xAF \xED\xA0\x80", "À¯ í\u00A0€"},  // overlong, and half a pair
      {"\xF4\x90\x80\x80 \xE2\x82", "ô\uFFFD€€ â‚"},
      {"cut \xC3", "cut Ã"},
      {"", ""}};
  for (const auto& [bytes, shown] : kRows) EXPECT_EQ(ReadableText(bytes), shown);
}

}  // namespace
}  // namespace mw
