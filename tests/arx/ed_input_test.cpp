#include "arx/ed/edinput.h"

#include "arx/ed/accmd.h"
#include "arx/rx/rxdict.h"
#include "ed_support.h"

#include <cmath>
#include <numbers>

namespace {

using veltora::base::ScriptError;
constexpr int kThrows = 1;  // no result of a prompt: a refused script line

class InputTest : public EditorTest {
protected:
  template <class Prompt>
  int outcome(const Prompt& prompt) {
    try {
      return prompt();
    } catch (const ScriptError&) {
      return kThrows;
    }
  }
};

struct NumberRow {
  const char* line;
  int bits;
  int outcome;
  double value;
};

TEST_F(InputTest, WholeNumbers) {
  const NumberRow rows[] = {{"12", 0, RTNORM, 12},
                            {" -3 ", 0, RTNORM, -3},
                            {"+7", 0, RTNORM, 7},
                            {"2147483647", 0, RTNORM, 2147483647},
                            {"2147483648", 0, kThrows, -99},
                            {"-2147483649", 0, kThrows, -99},
                            {"1.0", 0, kThrows, -99},
                            {"1e2", 0, kThrows, -99},
                            {"12a", 0, kThrows, -99},
                            {"+-7", 0, kThrows, -99},
                            {"0", RSG_NOZERO, kThrows, -99},
                            {"0", RSG_NONEG, RTNORM, 0},
                            {"-1", RSG_NONEG, kThrows, -99},
                            {"-1", RSG_NOZERO, RTNORM, -1},
                            {"", 0, RTNONE, -99},
                            {"", RSG_NONULL, kThrows, -99},
                            {"abc", RSG_OTHER, RTKWORD, -99},
                            {"0", RSG_OTHER | RSG_NOZERO, RTKWORD, -99},
                            {"", RSG_OTHER | RSG_NONULL, RTKWORD, -99},
                            {"", RSG_OTHER, RTNONE, -99},
                            {"*annuler*", 0, RTCAN, -99}};
  for (const NumberRow& row : rows) {
    answer({row.line});
    int value = -99;
    acedInitGet(row.bits, nullptr);
    EXPECT_EQ(outcome([&] { return acedGetInt(L"\nNombre : ", &value); }), row.outcome)
        << row.line << " " << row.bits;
    EXPECT_EQ(value, static_cast<int>(row.value)) << row.line << " " << row.bits;
  }
}

TEST_F(InputTest, RealNumbers) {
  const NumberRow rows[] = {
      {"1.5", 0, RTNORM, 1.5},           {".5", 0, RTNORM, 0.5},    {"1e-3", 0, RTNORM, 0.001},
      {"1,5", 0, kThrows, -99},          {"nan", 0, kThrows, -99},  {"inf", 0, kThrows, -99},
      {"1e999", 0, kThrows, -99},        {"0x10", 0, kThrows, -99}, {"0.0", RSG_NOZERO, kThrows, -99},
      {"-0.1", RSG_NONEG, kThrows, -99}, {"", 0, RTNONE, -99}};
  for (const NumberRow& row : rows) {
    answer({row.line});
    double value = -99;
    acedInitGet(row.bits, nullptr);
    EXPECT_EQ(outcome([&] { return acedGetReal(nullptr, &value); }), row.outcome) << row.line;
    EXPECT_DOUBLE_EQ(value, row.value) << row.line;
  }
}

TEST_F(InputTest, Points) {
  struct Row {
    const char* line;
    bool withBase;
    int outcome;
    AcGePoint3d point;
  };
  // The base is (10, 20, 5); the point given last, (650000, 6860000, 100).
  const Row rows[] = {
      {"1,2", false, RTNORM, {1, 2, 0}},
      {" 1.5 , -2 , 3 ", false, RTNORM, {1.5, -2, 3}},
      {"650000.123,6860000.456", false, RTNORM, {650000.123, 6860000.456, 0}},
      {"@1,2", true, RTNORM, {11, 22, 5}},
      {"@1,2,3", false, RTNORM, {650001, 6860002, 103}},
      {"@", false, RTNORM, {650000, 6860000, 100}},
      {"@", true, RTNORM, {10, 20, 5}},
      {"@5<0", true, RTNORM, {15, 20, 5}},
      {"@5<100g", true, RTNORM, {10, 25, 5}},
      {"2<180", false, RTNORM, {-2, 0, 0}},
      {"1", false, kThrows, {}},
      {"1,", false, kThrows, {}},
      {"1,2,3,4", false, kThrows, {}},
      {"1;2", false, kThrows, {}},
      {"@1<", false, kThrows, {}},
      {"@1<2<3", false, kThrows, {}},
      {"1e999,0", false, kThrows, {}},
      {"", false, RTNONE, {}},
  };
  const ads_point base = {10, 20, 5};
  const ads_point last = {650000, 6860000, 100};
  for (const Row& row : rows) {
    answer({row.line});
    acedSetLastPoint(last);
    ads_point result = {0, 0, 0};
    EXPECT_EQ(outcome([&] { return acedGetPoint(row.withBase ? base : nullptr, L"\nPoint : ", result); }),
              row.outcome)
        << row.line;
    EXPECT_NEAR(result[0], row.point.x, 1e-9) << row.line;
    EXPECT_NEAR(result[1], row.point.y, 1e-9) << row.line;
    EXPECT_NEAR(result[2], row.point.z, 1e-9) << row.line;
  }
}

TEST_F(InputTest, DistancesAreNumbersOrPoints) {
  const ads_point base = {1, 1, 0};
  double d = 0;
  answer({"4,5,12"});
  EXPECT_EQ(acedGetDist(base, L"", &d), RTNORM);
  EXPECT_DOUBLE_EQ(d, 13);
  answer({"4,5,12"});
  acedInitGet(RSG_2D, nullptr);
  EXPECT_EQ(acedGetDist(base, L"", &d), RTNORM);
  EXPECT_DOUBLE_EQ(d, 5) << "z is ignored";
  answer({"0,0", "3,4"});
  EXPECT_EQ(acedGetDist(nullptr, L"", &d), RTNORM);
  EXPECT_DOUBLE_EQ(d, 5) << "two points";
  answer({"0,0", "@0,7"});
  EXPECT_EQ(acedGetDist(nullptr, L"", &d), RTNORM);
  EXPECT_DOUBLE_EQ(d, 7) << "the second refers to the first";
  answer({"1,1"});
  acedInitGet(RSG_NOZERO, nullptr);
  EXPECT_THROW(acedGetDist(base, L"", &d), ScriptError) << "a point on the base is no distance";
  answer({"0,0"});
  EXPECT_EQ(acedGetDist(nullptr, L"", &d), RTCAN) << "the second point never comes";
  answer({"2.5"});
  EXPECT_EQ(acedGetDist(nullptr, L"", &d), RTNORM);
  EXPECT_DOUBLE_EQ(d, 2.5);
}

TEST_F(InputTest, AnglesNameTheirUnit) {
  struct Row {
    const char* line;
    double expected;
  };
  const double pi = std::numbers::pi;
  const Row rows[] = {{"90", pi / 2},  {"50g", pi / 4}, {"1r", 1.0},     {"-90", 3 * pi / 2},
                      {"450", pi / 2}, {"400g", 0.0},   {"45°", pi / 4}, {"1,2", pi / 2}};
  const ads_point base = {1, 1, 0};
  for (const Row& row : rows) {
    answer({row.line});
    double angle = -1;
    ASSERT_EQ(acedGetAngle(base, L"", &angle), RTNORM) << row.line;
    EXPECT_NEAR(angle, row.expected, 1e-12) << row.line;
  }
}

TEST_F(InputTest, KeywordsByTheirCapitals) {
  struct Row {
    const wchar_t* list;
    const char* line;
    const char* keyword;  // null: not one
  };
  const Row rows[] = {{L"S T", "s", "S"},
                      {L"Sel Tous", "S", "Sel"},
                      {L"Sel Tous", "se", "Sel"},
                      {L"Sel Tous", "tousse", nullptr},
                      {L"LTscale", "lt", "LTscale"},
                      {L"LTscale", "l", nullptr},
                      {L"LTscale", "lts", "LTscale"},
                      {L"eXit", "x", "eXit"},
                      {L"eXit", "ex", "eXit"},
                      {L"eXit", "e", nullptr},
                      {L"TOUS", "tou", nullptr},
                      {L"TOUS", "tous", "TOUS"},
                      {L"Étendue", "é", "Étendue"},
                      {L"Grille,GR", "gr", "Grille"},
                      {L"Grille,GR", "g", nullptr},
                      {L"Oui Non _Yes No", "o", "Yes"},
                      {L"Oui Non _Yes No", "yes", "Yes"},
                      {L"Oui Non _Yes No", "_n", "No"},
                      {L"2Points 3Points", "3p", "3Points"}};
  for (const Row& row : rows) {
    answer({row.line});
    std::wstring keyword;
    acedInitGet(0, row.list);
    const int result = outcome([&] { return acedGetKword(L"", keyword); });
    EXPECT_EQ(result, row.keyword ? RTNORM : kThrows) << row.line;
    if (row.keyword) {
      EXPECT_EQ(keyword, veltora::base::fromUtf8(row.keyword)) << row.line;
    }
  }
  EXPECT_EQ(outcome([] { return acedGetKword(L"", nullptr, 0); }), RTERROR);
}

TEST_F(InputTest, AKeywordGoesBeforeAnyValueAndIsForgottenByTheNextPrompt) {
  answer({"T", "T"});
  int value = 5;
  acedInitGet(6, L"S T");
  EXPECT_EQ(acedGetInt(L"", &value), RTKWORD);
  ACHAR input[8];
  EXPECT_EQ(acedGetInput(input, 8), RTNORM);
  EXPECT_STREQ(input, L"T");
  EXPECT_EQ(value, 5);
  EXPECT_THROW(acedGetInt(L"", &value), ScriptError) << "keywords serve one prompt";
}

TEST_F(InputTest, ArbitraryTextIsAKeyword) {
  answer({"A12"});
  ads_name entity;
  ads_point at;
  AcDbDatabase database;
  acdbHostApplicationServices()->setWorkingDatabase(&database);
  acedInitGet(129, L"N");
  EXPECT_EQ(acedEntSel(L"\nDépart / Numero :", entity, at), RTKWORD);
  std::wstring input;
  acedGetInput(input);
  EXPECT_EQ(input, L"A12");
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

TEST_F(InputTest, Texts) {
  std::wstring value = L"?";
  answer({"deux mots"});
  EXPECT_EQ(acedGetString(0, L"", value), RTNORM);
  EXPECT_EQ(value, L"deux");
  answer({"deux mots é"});
  EXPECT_EQ(acedGetString(1, L"", value), RTNORM);
  EXPECT_EQ(value, L"deux mots é");
  answer({""});
  EXPECT_EQ(acedGetString(1, L"", value), RTNORM);
  EXPECT_EQ(value, L"");
  answer({"trop long"});
  ACHAR room[5] = L"????";
  EXPECT_EQ(acedGetString(1, L"", room, 5), RTNORM);
  EXPECT_STREQ(room, L"trop");
  EXPECT_EQ(acedGetString(1, L"", room, 5), RTCAN) << "the end of the input";
  EXPECT_STREQ(room, L"trop");
}

TEST_F(InputTest, APersonIsAskedAgainAndAScriptStops) {
  int value = 0;
  answer({"x", "-4", "4"}, true);
  acedInitGet(RSG_NONEG, nullptr);
  EXPECT_EQ(acedGetInt(L"\nNombre : ", &value), RTNORM);
  EXPECT_EQ(value, 4);
  EXPECT_TRUE(transcript.has("Un nombre entier est attendu."));
  EXPECT_TRUE(transcript.has("La valeur ne peut pas être négative."));
  answer({"x"}, true);
  EXPECT_EQ(acedGetInt(L"", &value), RTCAN) << "nobody answers any more";
  answer({"x", "4"});
  try {
    acedGetInt(L"", &value);
    FAIL();
  } catch (const ScriptError& error) {
    EXPECT_EQ(error.message, "Un nombre entier est attendu.");
  }
}

TEST_F(InputTest, CommentsAreNoAnswersAndTheTranscriptShowsQuestionAndAnswer) {
  int value = 0;
  answer({"; un commentaire", "7"});
  EXPECT_EQ(acedGetInt(L"\nNumero de départ : ", &value), RTNORM);
  EXPECT_EQ(value, 7);
  EXPECT_EQ(transcript.text, "\nNumero de départ : 7\n");
  acedPorts().source = nullptr;
  EXPECT_EQ(acedGetInt(L"", &value), RTCAN) << "without any source";
}

TEST_F(InputTest, ExpressionsAnswerByTheirValue) {
  int number = 0;
  double real = 0;
  ads_point point;
  answer({"(+ 1 2)"});
  EXPECT_THROW(acedGetInt(L"", &number), ScriptError) << "nobody evaluates";

  resbuf* value = nullptr;
  acedPorts().evaluate = [&](const std::wstring&) {
    acedInitGet(RSG_NONULL, L"Autre");  // as a question asked by the expression would
    return std::exchange(value, nullptr);
  };
  value = acutBuildList(RTLONG, 3);
  answer({"(+ 1 2)"});
  EXPECT_EQ(acedGetInt(L"", &number), RTNORM);
  EXPECT_EQ(number, 3);
  value = acutBuildList(RTREAL, 0.1 + 0.2);
  answer({"(f)"});
  EXPECT_EQ(acedGetReal(L"", &real), RTNORM);
  EXPECT_EQ(real, 0.1 + 0.2) << "no digit is lost";
  value = acutBuildList(RTREAL, 1.0);
  answer({"(f)"});
  EXPECT_EQ(acedGetAngle(nullptr, L"", &real), RTNORM);
  EXPECT_EQ(real, 1.0) << "angles of expressions are radians";
  value = acutBuildList(RTLB, RTREAL, 1.5, RTSHORT, 2, RTLE);
  answer({"(list 1.5 2)"});
  EXPECT_EQ(acedGetPoint(nullptr, L"", point), RTNORM);
  EXPECT_EQ(point[1], 2.0);
  value = acutBuildList(RTSTR, L"t");
  answer({"(f)"});
  acedInitGet(0, L"Tous");
  EXPECT_EQ(acedGetInt(L"", &number), RTKWORD);
  value = acutBuildList(RTNIL);
  answer({"(f)"});
  EXPECT_EQ(acedGetInt(L"", &number), RTNONE);
  value = acutBuildList(RTLB, RTSTR, L"a", RTLE);
  answer({"(f)"});
  EXPECT_THROW(acedGetInt(L"", &number), ScriptError);
  answer({"(faute)", "8"}, true);
  EXPECT_EQ(acedGetInt(L"", &number), RTNORM) << "a failed expression is asked for again";
  EXPECT_EQ(number, 8);
}

TEST_F(InputTest, GrReadTakesALineForAKeyOrAPick) {
  struct Row {
    const char* line;
    int type;
    short key;
  };
  for (const Row& row : {Row{"", 2, 13}, Row{"a", 2, 'a'}, Row{"bonjour", 2, 13}, Row{"1,2", 3, 0}}) {
    answer({row.line});
    int type = 0;
    resbuf result = {};
    ASSERT_EQ(acedGrRead(1, &type, &result), RTNORM) << row.line;
    EXPECT_EQ(type, row.type) << row.line;
    if (row.type == 2) {
      EXPECT_EQ(result.resval.rint, row.key) << row.line;
    }
  }
  int type = 0;
  resbuf result = {};
  EXPECT_EQ(acedGrRead(1, &type, &result), RTCAN);
}

TEST(WildcardTest, Patterns) {
  struct Row {
    const wchar_t* text;
    const wchar_t* pattern;
    bool matches;
  };
  const Row rows[] = {
      {L"PTS_12", L"PTS_*", true}, {L"PTS", L"PTS_*", false},
      {L"abc", L"a?c", true},      {L"a1c", L"a#c", true},
      {L"abc", L"a#c", false},     {L"é", L"@", true},
      {L"1", L"@", false},         {L"-", L".", true},
      {L"é", L".", false},         {L"b", L"[abc]", true},
      {L"d", L"[a-c]", false},     {L"d", L"[~a-c]", true},
      {L"a,b", L"a`,b", true},     {L"b", L"a,b", true},
      {L"", L"*", true},           {L"", L"", true},
      {L"x", L"", false},          {L"abc", L"~a*", false},
      {L"bcd", L"~a*", true},      {L"[", L"[", true},
      {L"a*", L"a`*", true},       {L"aab", L"*ab", true},
      {L"abab", L"*ab", true},     {L"Abc", L"abc", false},
      {L"]", L"[]]", true},        {L"a", L"`", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(acutWcMatch(row.text, row.pattern) == RTNORM, row.matches)
        << veltora::base::toUtf8(row.text) << " ~ " << veltora::base::toUtf8(row.pattern);
  }
  const std::wstring many(3000, L'a');
  EXPECT_EQ(acutWcMatch(many.c_str(), L"*a*a*a*a*a*a*a*a*b"), RTERROR) << "and soon";
}

void first() {}
void second() {}

TEST(CommandStackTest, GroupsKeepTheirOrderAndNamesIgnoreCase) {
  AcEdCommandStack stack;
  EXPECT_EQ(stack.addCommand(L"G1", L"CARROYAGE", L"CARROYAGE", ACRX_CMD_USEPICKSET, first), Acad::eOk);
  EXPECT_EQ(stack.addCommand(L"g1", L"VCODE", nullptr, 0, second), Acad::eOk);
  EXPECT_EQ(stack.addCommand(L"G2", L"carroyage", L"GRILLE", 0, second), Acad::eOk);
  EXPECT_EQ(stack.addCommand(L"G1", L"Carroyage", L"AUTRE", 0, first), Acad::eDuplicateKey);
  EXPECT_EQ(stack.addCommand(L"G1", L"", L"", 0, first), Acad::eInvalidInput);
  EXPECT_EQ(stack.addCommand(L"G1", L"X", L"X", 0, nullptr), Acad::eInvalidInput);

  ASSERT_EQ(stack.commands().size(), 3u);
  EXPECT_STREQ(stack.commands()[1]->globalName(), L"VCODE");
  EXPECT_EQ(stack.lookupCmd(L"carroyage")->functionAddr(), first) << "of two the group registered first";
  EXPECT_EQ(stack.popGroupToTop(L"G2"), Acad::eOk);
  EXPECT_EQ(stack.lookupCmd(L"CARROYAGE")->functionAddr(), second);
  EXPECT_EQ(stack.lookupCmd(L"grille")->functionAddr(), second) << "by its local name";
  EXPECT_EQ(stack.removeGroup(L"G2"), Acad::eOk);
  EXPECT_EQ(stack.removeGroup(L"G2"), Acad::eKeyNotFound);
  EXPECT_EQ(stack.lookupCmd(L"grille"), nullptr);
  EXPECT_EQ(stack.removeCmd(L"G1", L"vcode"), Acad::eOk);
  EXPECT_EQ(stack.commands().size(), 1u);
  EXPECT_EQ(AcEdCommandStack::cast(acrxSysRegistry()->at(L"acad_registered_commands")), acedRegCmds);
}

}  // namespace
