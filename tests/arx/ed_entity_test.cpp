#include "ed_support.h"

#include <cmath>
#include <numbers>

namespace {

const resbuf* item(const AcEdRbHolder& chain, int code) {
  const resbuf* at = chain.get();
  while (at && at->restype != code) at = at->rbnext;
  return at;
}

resbuf* item(AcEdRbHolder& chain, int code) { return const_cast<resbuf*>(item(std::as_const(chain), code)); }

class EntityChainTest : public DrawingTest {
protected:
  static void nameInto(AcDbObjectId id, ads_name name) {
    ads_name made = {0, 0};
    acdbGetAdsName(made, id);
    ads_name_set(made, name);
  }
  static AcEdRbHolder get(AcDbObjectId id, const resbuf* applications = nullptr) {
    ads_name name;
    nameInto(id, name);
    return AcEdRbHolder(acdbEntGetX(name, applications));
  }
  static int errnoValue() {
    resbuf number = {};
    acedGetVar(L"ERRNO", &number);
    return number.resval.rint;
  }
};

TEST_F(EntityChainTest, GetGivesAllGroupsWithAnglesInRadians) {
  auto* turned = new AcDbText({1, 2, 3}, L"Été", {}, 2.5, std::numbers::pi / 3);
  const AcDbObjectId id = append(*db, turned, L"Textes");
  const AcEdRbHolder chain = get(id);
  ASSERT_NE(chain, nullptr);
  EXPECT_EQ(chain->restype, -1);
  ASSERT_NE(item(chain, 0), nullptr);
  EXPECT_STREQ(item(chain, 0)->resval.rstring, L"TEXT");
  EXPECT_STREQ(item(chain, 8)->resval.rstring, L"Textes");
  EXPECT_STREQ(item(chain, 1)->resval.rstring, L"Été");
  EXPECT_EQ(item(chain, 10)->resval.rpoint[2], 3.0);
  EXPECT_EQ(item(chain, 20), nullptr) << "a point is one item";
  EXPECT_NEAR(item(chain, 50)->resval.rreal, std::numbers::pi / 3, 1e-15);
  AcDbObjectId owner;
  EXPECT_EQ(acdbGetObjectId(owner, item(chain, 330)->resval.rlname), Acad::eOk);
  EXPECT_EQ(owner, db->modelSpaceId());
  ads_name found;
  EXPECT_EQ(acdbHandEnt(item(chain, 5)->resval.rstring, found), RTNORM);
  EXPECT_TRUE(ads_name_equal(found, chain->resval.rlname));
  const ads_name nothing = {12345, 6};
  EXPECT_EQ(acdbEntGet(nothing), nullptr);
}

TEST_F(EntityChainTest, ModChangesWhatTheChainSaysAndNothingElse) {
  auto* turned = new AcDbText({650000.125, 6860000.5, 0}, L"12", {}, 2.5, 0.7);
  const AcDbObjectId id = append(*db, turned, L"Textes");
  const double rotation = AcDbObjectPointer<AcDbText>(id)->rotation();
  AcEdRbHolder chain = get(id);
  item(chain, 10)->resval.rpoint[0] = 650001.25;
  ASSERT_EQ(acdbEntMod(chain.get()), RTNORM);
  {
    const AcDbObjectPointer<AcDbText> text(id);
    EXPECT_EQ(text->position().x, 650001.25);
    EXPECT_EQ(text->position().y, 6860000.5);
    EXPECT_EQ(text->rotation(), rotation) << "an angle that was not changed keeps its last digit";
    EXPECT_EQ(text->layer(), L"Textes");
    EXPECT_EQ(text->ownerId(), db->modelSpaceId());
  }
  // A short chain changes the groups that it holds.
  AcEdRbHolder brief(acutBuildList(-1, chain->resval.rlname, 8, L"0", 1, L"treize"));
  db->undoLog().begin(L"MOD");
  ASSERT_EQ(acdbEntMod(brief.get()), RTNORM);
  db->undoLog().end();
  {
    const AcDbObjectPointer<AcDbText> text(id);
    EXPECT_EQ(text->layer(), L"0");
    EXPECT_EQ(text->textString(), L"treize");
    EXPECT_EQ(text->position().x, 650001.25);
  }
  EXPECT_EQ(db->undoLog().undo(), L"MOD") << "one step";
  EXPECT_EQ(AcDbObjectPointer<AcDbText>(id)->textString(), L"12");
}

TEST_F(EntityChainTest, ModKeepsTheVerticesOfAPolylineAndTheAttributesOfABlock) {
  auto* drawn = new AcDbPolyline;
  drawn->addVertexAt(0, {0, 0}, 0.5);
  drawn->addVertexAt(1, {10, 0});
  drawn->addVertexAt(2, {10, 10});
  const AcDbObjectId polyline = append(*db, drawn);
  AcEdRbHolder chain = get(polyline);
  ASSERT_EQ(acdbEntMod(chain.get()), RTNORM);
  {
    const AcDbObjectPointer<AcDbPolyline> open(polyline);
    double bulge = 0;
    EXPECT_EQ(open->numVerts(), 3u);
    open->getBulgeAt(0, bulge);
    EXPECT_EQ(bulge, 0.5);
  }
  const AcDbObjectId reference =
      append(*db, new AcDbBlockReference({5, 5, 0}, db->recordOf("BLOCK_RECORD", L"B")));
  AcDbObjectId attribute;
  {
    AcDbObjectPointer<AcDbBlockReference> open(reference, AcDb::kForWrite);
    auto* made = new AcDbAttribute({5, 6, 0}, L"7", L"NUMPT");
    open->appendAttribute(attribute, made);
    made->close();
  }
  chain = get(reference);
  item(chain, 10)->resval.rpoint[0] = 8;
  ASSERT_EQ(acdbEntMod(chain.get()), RTNORM);
  const AcDbObjectPointer<AcDbBlockReference> open(reference);
  EXPECT_EQ(open->position().x, 8);
  ASSERT_EQ(open->subEntityIds().size(), 1u);
  EXPECT_EQ(open->subEntityIds()[0], attribute);
}

TEST_F(EntityChainTest, ModReplacesXdataOfTheApplicationsItNames) {
  acdbRegApp(L"VARNPLUS");
  acdbRegApp(L"AUTRE");
  const AcDbObjectId id = point(0, 0);
  {
    AcDbObjectPointer<AcDbEntity> open(id, AcDb::kForWrite);
    const AcEdRbHolder data(acutBuildList(1001, L"AUTRE", 1000, L"gardé"));
    open->setXData(data.get());
  }
  AcEdRbHolder chain = get(id);
  AcEdRbHolder change(acutBuildList(-1, chain->resval.rlname, -3, 1001, L"VARNPLUS", 1070, 1));
  ASSERT_EQ(acdbEntMod(change.get()), RTNORM);
  const AcEdRbHolder wanted(acutBuildList(RTSTR, L"VARNPLUS"));
  const AcEdRbHolder got = get(id, wanted.get());
  ASSERT_NE(item(got, -3), nullptr);
  EXPECT_STREQ(item(got, 1001)->resval.rstring, L"VARNPLUS");
  EXPECT_EQ(item(got, 1070)->resval.rint, 1);
  EXPECT_EQ(item(got, 1000), nullptr) << "only the application asked for";
  EXPECT_TRUE(AcDbObjectPointer<AcDbEntity>(id)->hasXData(L"AUTRE"));

  AcEdRbHolder stranger(acutBuildList(-1, chain->resval.rlname, 62, 1, -3, 1001, L"INCONNUE", 1070, 1));
  EXPECT_EQ(acdbEntMod(stranger.get()), RTERROR);
  EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(id)->colorIndex(), 256) << "nothing changed";
}

TEST_F(EntityChainTest, ChainsThatDoNotFitAreRefused) {
  const AcDbObjectId id = text(1, 2, L"x");
  AcEdRbHolder whole = get(id);
  const double bad[] = {NAN, 0, 0};
  const ads_name nobody = {12345, 6};
  struct Row {
    const char* name;
    resbuf* chain;
    int cause;
  };
  const Row rows[] = {
      {"without name", acutBuildList(8, L"0"), 15},
      {"name of nothing", acutBuildList(-1, nobody, 8, L"0"), 1},
      {"another type", acutBuildList(-1, whole->resval.rlname, 0, L"LINE"), 15},
      {"no number", acutBuildList(-1, whole->resval.rlname, 10, bad), 15},
      {"infinite", acutBuildList(-1, whole->resval.rlname, 40, HUGE_VAL), 15},
      {"reference to nothing", acutBuildList(-1, whole->resval.rlname, 340, nobody), 15},
  };
  for (const Row& row : rows) {
    const AcEdRbHolder chain(row.chain);
    acedSetErrno(0);
    EXPECT_EQ(acdbEntMod(chain.get()), RTERROR) << row.name;
    EXPECT_EQ(errnoValue(), row.cause) << row.name;
  }
  EXPECT_EQ(AcDbObjectPointer<AcDbText>(id)->position().x, 1.0);
}

TEST_F(EntityChainTest, MakeDeleteAndWalk) {
  const double from[] = {0, 0, 0};
  const double to[] = {3, 4, 0};
  const AcEdRbHolder chain(acutBuildList(0, L"LINE", 8, L"Neuf", 10, from, 11, to));
  ASSERT_EQ(acdbEntMake(chain.get()), RTNORM);
  const AcDbObjectId second = point(9, 9);
  ads_name name;
  ads_name next;
  ASSERT_EQ(acdbEntNext(nullptr, name), RTNORM);
  AcDbObjectId id;
  acdbGetObjectId(id, name);
  {
    const AcDbObjectPointer<AcDbLine> made(id);
    ASSERT_NE(made.object(), nullptr);
    EXPECT_EQ(made->endPoint().y, 4);
    EXPECT_EQ(made->layer(), L"Neuf");
  }
  EXPECT_EQ(acdbEntNext(name, next), RTNORM);
  acdbGetObjectId(id, next);
  EXPECT_EQ(id, second);
  EXPECT_EQ(acdbEntNext(next, next), RTERROR) << "the end";
  EXPECT_EQ(acdbEntDel(name), RTNORM);
  EXPECT_EQ(acdbEntGet(name), nullptr) << "erased";
  EXPECT_EQ(acdbEntDel(name), RTNORM);
  EXPECT_EQ(acdbEntUpd(name), RTNORM) << "brought back";
  for (resbuf* wrong : {acutBuildList(0, L"INCONNU", 8, L"0"), acutBuildList(0, L"VERTEX", 10, from),
                        acutBuildList(8, L"0")}) {
    const AcEdRbHolder refused(wrong);
    EXPECT_EQ(acdbEntMake(refused.get()), RTERROR);
  }
}

TEST_F(EntityChainTest, TextBox) {
  const AcEdRbHolder chain(acutBuildList(0, L"TEXT", 1, L"12", 40, 2.0, 50, 1.0));
  ads_point low;
  ads_point high;
  ASSERT_EQ(acedTextBox(chain.get(), low, high), RTNORM);
  const AcDbTextSize size = acdbTextExtents(L"12", 2.0);
  EXPECT_DOUBLE_EQ(high[0], size.width);
  EXPECT_DOUBLE_EQ(high[1], 2.0);
  EXPECT_DOUBLE_EQ(low[0], 0.0);
  const AcEdRbHolder other(acutBuildList(0, L"LINE"));
  EXPECT_EQ(acedTextBox(other.get(), low, high), RTERROR);
}

TEST_F(EntityChainTest, Variables) {
  struct Row {
    const char* name;
    const wchar_t* variable;
    resbuf* value;
    int status;
  };
  EXPECT_FALSE(db->recordOf("LAYER", L"Bati").isNull());
  const double p[] = {1, 2, 3};
  const Row rows[] = {
      {"layer", L"clayer", acutBuildList(RTSTR, L"bati"), RTNORM},
      {"unknown layer", L"CLAYER", acutBuildList(RTSTR, L"Absent"), RTERROR},
      {"layer by number", L"CLAYER", acutBuildList(RTSHORT, 1), RTERROR},
      {"text size", L"TEXTSIZE", acutBuildList(RTREAL, 3.5), RTNORM},
      {"text size by a whole number", L"TEXTSIZE", acutBuildList(RTSHORT, 4), RTNORM},
      {"text size of nothing", L"TEXTSIZE", acutBuildList(RTREAL, 0.0), RTERROR},
      {"mode", L"OSMODE", acutBuildList(RTSHORT, 16), RTNORM},
      {"mode out of range", L"OSMODE", acutBuildList(RTLONG, 70000), RTERROR},
      {"read-only", L"DWGNAME", acutBuildList(RTSTR, L"x"), RTERROR},
      {"seed", L"HANDSEED", acutBuildList(RTSTR, L"1"), RTERROR},
      {"point", L"LASTPOINT", acutBuildList(RT3DPOINT, p), RTNORM},
      {"unknown", L"N_EXISTE_PAS", acutBuildList(RTSHORT, 1), RTERROR},
  };
  for (const Row& row : rows) {
    const AcEdRbHolder value(row.value);
    EXPECT_EQ(acedSetVar(row.variable, value.get()), row.status) << row.name;
  }
  resbuf* got = acutNewRb(RTNONE);
  ASSERT_EQ(acedGetVar(L"CLAYER", got), RTNORM);
  EXPECT_STREQ(got->resval.rstring, L"Bati");
  acutRelRb(got);
  resbuf value = {};
  EXPECT_EQ(acedGetVar(L"TEXTSIZE", &value), RTNORM);
  EXPECT_EQ(value.resval.rreal, 4.0);
  EXPECT_EQ(acedGetVar(L"OSMODE", &value), RTNORM);
  EXPECT_EQ(value.resval.rint, 16);
  line(1, 2, 30, 40);
  EXPECT_EQ(acedGetVar(L"EXTMAX", &value), RTNORM);
  EXPECT_EQ(value.resval.rpoint[1], 40.0);
  EXPECT_EQ(acedGetVar(L"N_EXISTE_PAS", &value), RTERROR);
}

TEST_F(EntityChainTest, TransientGraphicsAndView) {
  const double a[] = {0, 0, 0};
  const double b[] = {1, 2, 0};
  acedGrDraw(a, b, 3, 0);
  const ads_matrix moved = {{1, 5, 0, 10}, {0, 1, 0, 20}, {0, 0, 1, 0}, {0, 0, 0, 1}};
  const AcEdRbHolder pairs(acutBuildList(RTSHORT, 1, RT3DPOINT, a, RT3DPOINT, b));
  const AcEdRbHolder odd(acutBuildList(RTSHORT, 1, RT3DPOINT, a));
  EXPECT_EQ(acedGrVecs(pairs.get(), moved), RTNORM);
  EXPECT_EQ(acedGrVecs(odd.get(), nullptr), RTERROR);
  ASSERT_EQ(acedTransientGraphics().size(), 2u);
  EXPECT_EQ(acedTransientGraphics()[1].to.x, 1 + 5 * 2 + 10.0);
  acedRedraw(nullptr, 0);
  EXPECT_TRUE(acedTransientGraphics().empty());

  EXPECT_EQ(acedZoomWindow({650000, 6860000}, {650300, 6860100}), Acad::eOk);
  EXPECT_DOUBLE_EQ(acedView().height, 300 / acedView().aspect) << "the width decides";
  EXPECT_DOUBLE_EQ(acedView().center.x, 650150);
  const double height = acedView().height;
  EXPECT_EQ(acedZoomWindow({5, 5}, {5, 5}), Acad::eOk);
  EXPECT_DOUBLE_EQ(acedView().height, height);
  EXPECT_EQ(acedSetView({NAN, 0}, 10), Acad::eInvalidInput);
}

}  // namespace
