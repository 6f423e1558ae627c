#include "core/text.h"

#include <gtest/gtest.h>
#include <limits>

#include "core/fixed_string.h"
#include "core/game_random.h"
#include "core/readable_text.h"

namespace mw {
namespace {

TEST(Text, ComparesAsUnsignedLowerCaseBytes) {
  EXPECT_TRUE(EqualNoCase("Levels/Island", "levels/ISLAND"));
  EXPECT_LT(CompareNoCase("a_b", "aab"), 0) << "'_' sorts before letters, also capital ones";
  EXPECT_LT(CompareNoCase("A_B", "AAB"), 0);
  EXPECT_GT(CompareNoCase("\xC4", "z"), 0) << "bytes above 127 sort after ASCII";
  EXPECT_LT(CompareNoCase("ab", "abc"), 0);
}

TEST(Text, TokenizerChangesSeparatorsBetweenCalls) {
  Tokenizer tokens("  water.texLayer1  texture/water1 rest\n");
  EXPECT_EQ(tokens.Next(" /"), "water.texLayer1");
  EXPECT_EQ(tokens.Next(" \n\r"), "texture/water1");
  EXPECT_EQ(tokens.Next(" \n\r"), "rest");
  EXPECT_EQ(tokens.Next(" \n\r"), std::nullopt);
  EXPECT_EQ(tokens.Next(" "), std::nullopt) << "the end stays the end";
}

TEST(Text, IntegersReadTheirLeadingDigits) {
  EXPECT_EQ(ParseInt(" -12abc"), -12);
  EXPECT_EQ(ParseInt("x"), 0);
  EXPECT_EQ(ParseInt(std::nullopt), 0);
  EXPECT_EQ(ParseInt("99999999999999999999"), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(ParseInt("-99999999999"), std::numeric_limits<std::int32_t>::min());
}

TEST(Text, FloatsAreLimitedToFiniteValues) {
  EXPECT_FLOAT_EQ(ParseFloat("0.75x"), 0.75f);
  EXPECT_FLOAT_EQ(ParseFloat("0x10"), 16.0f);
  EXPECT_EQ(ParseFloat("nan"), 0.0f);
  EXPECT_EQ(ParseFloat("inf"), std::numeric_limits<float>::max());
  EXPECT_EQ(ParseFloat("-1e999"), -std::numeric_limits<float>::max());
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
  EXPECT_EQ(GameRandom(), 41);
  EXPECT_EQ(GameRandom(), 18467);
  EXPECT_EQ(GameRandom(), 6334);
}

TEST(Text, NamesOfOlderToolsAreShownInLettersAndUtf8StaysAsItIs) {
  const struct {
    std::string_view bytes, shown;
  } cases[] = {{"Bunker_01", "Bunker_01"},
               {"Mühle \u20AC \U0001F333", "Mühle \u20AC \U0001F333"},
               {"M\xFChle \xC9t\xE9 \x80\x9F", "Mühle Été €Ÿ"},
               {"Caf\xC3\xA9 and Caf\xE9", "Café and Café"},
               {"\xC0\xAF \xED\xA0\x80", "À¯ í\u00A0€"},  // overlong, and half a pair
               {"\xF4\x90\x80\x80 \xE2\x82", "ô\uFFFD€€ â‚"},
               {"cut \xC3", "cut Ã"},
               {"", ""}};
  for (const auto& [bytes, shown] : cases) EXPECT_EQ(ReadableText(bytes), shown);
}

}  // namespace
}  // namespace mw
