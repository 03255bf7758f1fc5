#include "arx/ed/edinput.h"

#include "arx/ed/accmd.h"
#include "arx/ed/edfiles.h"
#include "arx/rx/rxdict.h"
#include "ed_support.h"
#include "support/case_rows.h"

#include <cmath>
#include <map>
#include <sstream>

namespace {

using veltora::base::fromUtf8;
using veltora::base::ScriptError;
using veltora::base::toUtf8;

class InputTest : public EditorTest {
protected:
  /// The status of a prompt in a word; "refused" for a script line that stops the script.
  template <class Prompt>
  static std::string outcome(const Prompt& prompt) {
    static const std::map<int, const char*> kWords = {
        {RTNORM, "given"}, {RTNONE, "none"}, {RTCAN, "cancelled"}, {RTKWORD, "keyword"}, {RTERROR, "error"}};
    try {
      return kWords.at(prompt());
    } catch (const ScriptError&) {
      return "refused";
    }
  }
  /// Asks once. @param base  point that a point, a distance or an angle starts from; null for none
  std::string ask(const std::string& what, const ads_real* base) {
    if (what == "integer") {
      int number = -99;
      const std::string result = outcome([&] { return acedGetInt(L"\nNombre : ", &number); });
      values = {static_cast<double>(number)};
      return result;
    }
    if (what == "keyword") return outcome([&] { return acedGetKword(L"", text); });
    if (what == "word" || what == "text")
      return outcome([&] { return acedGetString(what == "text", L"", text); });
    values.assign(what == "point" ? 3 : 1, -99);
    return outcome([&] {
      if (what == "point") return acedGetPoint(base, L"\nPoint : ", values.data());
      if (what == "distance") return acedGetDist(base, L"", values.data());
      return what == "angle" ? acedGetAngle(base, L"", values.data()) : acedGetReal(nullptr, values.data());
    });
  }
  std::vector<double> values;
  std::wstring text;
};

TEST_F(InputTest, ASourceLearnsWhatIsAskedFor) {
  using Kind = veltora::base::Request::Kind;
  const ads_point base = {10, 20, 5};
  ads_point point;
  double value = 0;
  int number = 0;
  ads_name name;
  const struct {
    const char* what;
    Kind kind;
    bool hasBase;
    std::function<void()> ask;
  } rows[] = {
      {"point", Kind::kPoint, true, [&] { acedGetPoint(base, L"Au point : ", point); }},
      {"corner", Kind::kCorner, true, [&] { acedGetCorner(base, L"Au point : ", point); }},
      {"distance", Kind::kDistance, true, [&] { acedGetDist(base, L"Au point : ", &value); }},
      {"angle", Kind::kAngle, false, [&] { acedGetAngle(nullptr, L"Au point : ", &value); }},
      {"integer", Kind::kInteger, false, [&] { acedGetInt(L"Au point : ", &number); }},
      {"real", Kind::kReal, false, [&] { acedGetReal(L"Au point : ", &value); }},
      {"keyword", Kind::kKeyword, false, [&] { acedGetKword(L"Au point : ", text); }},
      {"entity", Kind::kEntity, false, [&] { acedEntSel(L"Au point : ", name, point); }},
  };
  AcDbDatabase drawing;
  acdbHostApplicationServices()->setWorkingDatabase(&drawing);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    acedInitGet(0, L"Clore annUler _Close Undo");
    row.ask();
    EXPECT_EQ(source.asked.kind, row.kind);
    EXPECT_EQ(source.asked.prompt, "Au point : ");
    EXPECT_EQ(source.asked.keywords, (std::vector<std::string>{"Clore", "annUler"}));
    ASSERT_EQ(source.asked.from.has_value(), row.hasBase);
    if (row.hasBase) {
      EXPECT_EQ(*source.asked.from, (std::array{10.0, 20.0, 5.0}));
    }
  }
}

TEST_F(InputTest, PromptsTakeWhatTheyAskForAndRefuseTheRest) {
  const ads_point base = {10, 20, 5};
  const ads_point last = {650000, 6860000, 100};
  for (const CaseRow& row : caseRows("arx/cases/prompts.txt", "prompts")) {
    SCOPED_TRACE(row.place);
    const std::string& what = row[0];
    source.lines.clear();
    for (std::stringstream lines(row[4]); std::getline(lines, source.lines.emplace_back(), '/');) continue;
    source.lines.pop_back();
    if (source.lines.empty()) source.lines.emplace_back();
    acedSetLastPoint(last);
    acedInitGet(row.integer(2), row[3].empty() ? nullptr : fromUtf8(row[3]).c_str());
    text = L"?";
    EXPECT_EQ(ask(what, row[1].empty() ? nullptr : base), row[5]);
    std::istringstream numbers(row[5] == "given" ? row[6] : "-99 -99 -99");
    const double tolerance = what == "point" ? 1e-9 : what == "angle" ? 1e-12 : 0;
    for (const double value : std::exchange(values, {})) {
      double expected = NAN;
      numbers >> expected;
      EXPECT_NEAR(value, expected, tolerance);
    }
    EXPECT_TRUE(text == L"?" || toUtf8(text) == row[6]) << toUtf8(text);
  }
  EXPECT_EQ(outcome([] { return acedGetKword(L"", nullptr, 0); }), "error");
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

TEST_F(InputTest, ATextIsCutToTheRoomForIt) {
  answer({"non", "trop long"});
  ACHAR room[5] = L"????";
  EXPECT_EQ(acedGetString(1, L"", room, 0), RTERROR);
  EXPECT_EQ(acedGetString(1, L"", room, 1), RTNORM);
  EXPECT_STREQ(room, L"");
  EXPECT_EQ(acedGetString(1, L"", room, 5), RTNORM);
  EXPECT_STREQ(room, L"trop");
  EXPECT_EQ(acedGetString(1, L"", room, 5), RTCAN) << "the end of the input";
  EXPECT_STREQ(room, L"trop");
}

TEST(FindFile, GivesAPathThatHasRoom) {
  const wchar_t* name = L"" VELTORA_SOURCE_DIR "/README.md";
  ACHAR room[4096] = L"";
  EXPECT_EQ(acedFindFile(name, room, 4), RTERROR);
  EXPECT_STREQ(room, L"");
  ASSERT_EQ(acedFindFile(name, room, 4096), RTNORM);
  EXPECT_STREQ(room, name);
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
  struct Row {
    const char* prompt;
    resbuf* value;
    const char* outcome;
    std::vector<double> expected;
  };
  const Row rows[] = {
      {"integer", acutBuildList(RTLONG, 3), "given", {3}},
      {"real", acutBuildList(RTREAL, 0.1 + 0.2), "given", {0.1 + 0.2}},  // no digit is lost
      {"angle", acutBuildList(RTREAL, 1.0), "given", {1}},               // radians
      {"point", acutBuildList(RTLB, RTREAL, 1.5, RTSHORT, 2, RTLE), "given", {1.5, 2, 0}},
      {"integer", acutBuildList(RTSTR, L"t"), "keyword", {-99}},
      {"integer", acutBuildList(RTNIL), "none", {-99}},
      {"integer", acutBuildList(RTLB, RTSTR, L"a", RTLE), "refused", {-99}},
  };
  answer({"(+ 1 2)"});
  EXPECT_EQ(ask("integer", nullptr), "refused") << "nobody evaluates";
  resbuf* value = nullptr;
  acedPorts().evaluate = [&](const std::wstring&) {
    acedInitGet(RSG_NONULL, L"Autre");  // as a question asked by the expression would
    return std::exchange(value, nullptr);
  };
  for (const Row& row : rows) {
    value = row.value;
    answer({"(f)"});
    acedInitGet(0, L"Tous");
    EXPECT_EQ(ask(row.prompt, nullptr), row.outcome);
    EXPECT_EQ(values, row.expected) << row.prompt;
  }
  answer({"(faute)", "8"}, true);
  EXPECT_EQ(ask("integer", nullptr), "given") << "a failed expression is asked for again";
  EXPECT_EQ(values[0], 8);
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
  for (const CaseRow& row : caseRows("arx/cases/prompts.txt", "patterns"))
    EXPECT_EQ(acutWcMatch(fromUtf8(row[0]).c_str(), fromUtf8(row[1]).c_str()) == RTNORM, row[2] == "yes")
        << row.place;
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
