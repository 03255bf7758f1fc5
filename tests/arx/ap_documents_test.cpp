#include "ap_support.h"

#include <stdexcept>

namespace {

using Strings = std::vector<std::string>;

std::string title(const AcApDocument* document) {
  return document ? veltora::base::toUtf8(document->docTitle()) : "-";
}

class Reactor : public AcApDocManagerReactor {
public:
  Strings events;
  Reactor() { acDocManager->addReactor(this); }
  ~Reactor() override { acDocManager->removeReactor(this); }
  void documentCreated(AcApDocument* d) override { events.push_back("created " + title(d)); }
  void documentToBeDestroyed(AcApDocument* d) override { events.push_back("to be destroyed " + title(d)); }
  void documentBecameCurrent(AcApDocument* d) override {
    events.push_back("current " + title(d));
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), d->database());
  }
  void documentActivated(AcApDocument* d) override { events.push_back("activated " + title(d)); }
};

TEST_F(HostTest, MessagesAndEventsOfSeveralDocumentsComeInOrder) {
  acDocManager->appContextNewDocument();
  AcApDocument* const first = curDoc();
  ASSERT_TRUE(loadFake());
  EXPECT_EQ(FakeModule::messages, (Strings{"init", "load dwg"})) << "for the document that is open";
  Reactor reactor;
  acDocManager->addReactor(&reactor);
  acDocManager->appContextNewDocument();
  AcApDocument* const second = curDoc();
  const std::string a = title(first);
  const std::string b = title(second);
  EXPECT_NE(a, b);
  EXPECT_EQ(reactor.events, (Strings{"created " + b, "current " + b, "activated " + b}));
  EXPECT_EQ(FakeModule::messages, (Strings{"init", "load dwg", "load dwg"}));

  reactor.events.clear();
  EXPECT_EQ(acDocManager->activateDocument(first), Acad::eOk);
  EXPECT_EQ(acDocManager->activateDocument(first), Acad::eOk);
  EXPECT_EQ(reactor.events, (Strings{"current " + a, "activated " + a})) << "nothing for the current one";
  EXPECT_EQ(acDocManager->activateDocument(nullptr), Acad::eInvalidInput);

  reactor.events.clear();
  FakeModule::messages.clear();
  AcDbDatabase* inMessage = nullptr;
  FakeModule::onMessage = [&](AcRx::AppMsgCode, void*) {
    inMessage = acdbHostApplicationServices()->workingDatabase();
  };
  AcDbDatabase* const closed = second->database();
  EXPECT_EQ(acDocManager->closeDocument(second), Acad::eOk);
  EXPECT_EQ(inMessage, closed) << "the module works in the document that closes";
  EXPECT_EQ(curDoc(), first) << "and the current one stays";
  EXPECT_EQ(reactor.events, (Strings{"to be destroyed " + b}));
  EXPECT_EQ(FakeModule::messages, (Strings{"unload dwg"}));
  EXPECT_EQ(acDocManager->closeDocument(first), Acad::eOk);
  EXPECT_EQ(curDoc(), nullptr);
  EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);

  FakeModule::messages.clear();
  acDocManager->quit();
  EXPECT_EQ(FakeModule::messages, (Strings{"pre quit", "quit", "unload"}));
}

TEST_F(HostTest, TheSaveMessageComesBeforeTheFileIsWritten) {
  acDocManager->appContextNewDocument();
  AcApDocument* const saved = curDoc();
  acDocManager->appContextNewDocument();
  AcApDocument* const other = curDoc();
  ASSERT_TRUE(loadFake());
  FakeModule::onMessage = [&](AcRx::AppMsgCode msg, void*) {
    if (msg == AcRx::kSaveMsg)
      append(*acdbHostApplicationServices()->workingDatabase(), new AcDbPoint({1, 2, 3}));
  };
  std::wstring message;
  ASSERT_EQ(acDocManager->saveDocument(saved, path("a.dxf").c_str(), &message), Acad::eOk)
      << veltora::base::toUtf8(message);
  EXPECT_EQ(curDoc(), other);
  EXPECT_EQ(count(*other->database()), 0u);
  EXPECT_FALSE(saved->isModified());
  EXPECT_EQ(title(saved), "a.dxf");
  FakeModule::onMessage = nullptr;
  ASSERT_EQ(acDocManager->closeDocument(saved), Acad::eOk);
  ASSERT_EQ(acDocManager->appContextOpenDocument(path("a.dxf").c_str(), &message), Acad::eOk);
  EXPECT_EQ(count(), 1u) << "what the module added is in the file";
  EXPECT_FALSE(curDoc()->isModified());
  EXPECT_FALSE(db().undoLog().canUndo());
  AcApDocument* const again = curDoc();
  acDocManager->activateDocument(other);
  EXPECT_EQ(acDocManager->appContextOpenDocument(path("./a.dxf").c_str()), Acad::eOk);
  EXPECT_EQ(curDoc(), again) << "opened once, by whatever name";
  EXPECT_EQ(acDocManager->documentCount(), 2);
}

TEST_F(HostTest, AFailedOpenOrSaveLeavesAllAsItWas) {
  acDocManager->appContextNewDocument();
  AcApDocument* const before = curDoc();
  append(db(), new AcDbPoint({0, 0, 0}));
  std::ofstream(folder / "faux.dxf") << "ceci n'est pas un dessin\n";
  std::ofstream(folder / "binaire.dwg") << "AC1032 binaire";
  for (const char* name : {"absent.dxf", "faux.dxf", "binaire.dwg", ""}) {
    std::wstring message;
    EXPECT_NE(acDocManager->appContextOpenDocument(*name ? path(name).c_str() : L"", &message), Acad::eOk)
        << name;
    EXPECT_FALSE(message.empty()) << name;
    EXPECT_EQ(curDoc(), before) << name;
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), before->database()) << name;
  }
  std::wstring message;
  EXPECT_NE(acDocManager->saveDocument(before, path("absent/a.dxf").c_str(), &message), Acad::eOk);
  EXPECT_FALSE(message.empty());
  EXPECT_FALSE(before->isNamedDrawing());
  EXPECT_TRUE(before->isModified());
  EXPECT_EQ(count(), 1u);
}

TEST_F(HostTest, AModuleThatThrowsDoesNotCostTheDrawing) {
  acDocManager->appContextNewDocument();
  loadFake();
  FakeModule::onMessage = [](AcRx::AppMsgCode, void*) { throw std::runtime_error("panne"); };
  append(db(), new AcDbPoint({0, 0, 0}));
  EXPECT_EQ(acDocManager->saveDocument(curDoc(), path("a.dxf").c_str()), Acad::eOk);
  EXPECT_TRUE(transcript.has("panne"));
  EXPECT_TRUE(std::filesystem::exists(folder / "a.dxf"));
  EXPECT_EQ(acDocManager->closeDocument(curDoc()), Acad::eOk);
}

// LISP functions of a module, per document.

class LispTest : public HostTest {
protected:
  /// Defines the names under codes 0, 1... and serves calls with `serve`.
  void offer(std::vector<std::wstring> names, std::function<void(int code)> serve) {
    FakeModule::onMessage = [names = std::move(names), serve = std::move(serve)](AcRx::AppMsgCode msg,
                                                                                 void*) {
      for (std::size_t i = 0; i < names.size(); ++i) {
        const int code = static_cast<int>(i);
        if (msg == AcRx::kLoadDwgMsg) {
          EXPECT_EQ(acedDefun(names[i].c_str(), code), RTNORM);
        }
        if (msg == AcRx::kUnloadDwgMsg) {
          EXPECT_EQ(acedUndef(names[i].c_str(), code), RTNORM);
        }
      }
      if (msg == AcRx::kInvkSubrMsg) serve(acedGetFunCode());
    };
    ASSERT_TRUE(loadFake());
  }
  static std::string called(const wchar_t* name, resbuf* arguments = nullptr) {
    const AcEdRbHolder given(arguments);
    const AcEdRbHolder result(acedLispFunctions()->call(name, given.get()));
    return result ? veltora::base::toUtf8(acedValueText(result.get())) : "-";
  }
};

TEST_F(LispTest, ResultsOfAllKinds) {
  acDocManager->appContextNewDocument();
  const double p[] = {1, 2.5, 0};
  std::vector<std::function<void()>> kinds = {
      [] { acedRetNil(); },
      [] { acedRetT(); },
      [] { acedRetVoid(); },
      [] { acedRetInt(70000); },
      [] { acedRetReal(0.5); },
      [] { acedRetStr(L"a\"b"); },
      [&] { acedRetPoint(p); },
      [] {},
      [] {
        const AcEdRbHolder list(acutBuildList(RTLB, RTSHORT, 1, RTDOTE, RTSTR, L"x", RTLE, RTREAL, 2.0));
        acedRetList(list.get());
      },
      [] { acedRetInt(1), acedRetInt(2); },
  };
  offer({L"f0", L"f1", L"f2", L"f3", L"f4", L"f5", L"f6", L"f7", L"f8", L"f9"},
        [&](int code) { kinds[static_cast<std::size_t>(code)](); });
  const char* const expected[] = {
      "nil", "T", "", "70000", "0.5", "\"a\\\"b\"", "(1.0 2.5 0.0)", "nil", "((1 . \"x\") 2.0)", "2"};
  for (std::size_t i = 0; i < kinds.size(); ++i)
    EXPECT_EQ(called((L"F" + std::to_wstring(i)).c_str()), expected[i]) << i;
  EXPECT_EQ(called(L"inconnue"), "-");
  EXPECT_LT(acedGetFunCode(), 0) << "outside a call";
  EXPECT_EQ(acedRetInt(1), RTERROR);
  EXPECT_EQ(acedGetArgs(), nullptr);
  EXPECT_EQ(acedDefun(L"dehors", 1), RTERROR) << "outside a message";
}

TEST_F(LispTest, CallsNestWithArgumentsOfTheirOwn) {
  acDocManager->appContextNewDocument();
  offer({L"somme"}, [](int) {
    const AcEdRbHolder arguments(acedGetArgs());
    const int n = arguments->resval.rlong;
    if (n == 0) {
      acedRetInt(0);
      return;
    }
    resbuf* inner = nullptr;
    const AcEdRbHolder call(acutBuildList(RTSTR, L"SOMME", RTLONG, n - 1));
    ASSERT_EQ(acedInvoke(call.get(), &inner), RTNORM);
    const AcEdRbHolder holder(inner);
    acedRetInt(n + inner->resval.rlong);
  });
  EXPECT_EQ(called(L"somme", acutBuildList(RTLONG, 20)), "210");
}

TEST_F(LispTest, EachDocumentHasItsFunctions) {
  acDocManager->appContextNewDocument();
  AcApDocument* const first = curDoc();
  offer({L"f"}, [](int) { acedRetT(); });
  acDocManager->appContextNewDocument();
  EXPECT_EQ(called(L"f"), "T");
  first->lispFunctions().undefineAll(L"faux");
  EXPECT_EQ(called(L"f"), "T") << "of another document";
  acDocManager->activateDocument(first);
  EXPECT_EQ(called(L"f"), "-");
}

TEST_F(LispTest, WhatAFunctionThrowsPassesAndTheNextCallWorks) {
  acDocManager->appContextNewDocument();
  bool fails = true;
  offer({L"f"}, [&](int) {
    if (fails) throw std::runtime_error("panne");
    acedRetInt(5);
  });
  EXPECT_THROW(called(L"f"), std::runtime_error);
  EXPECT_LT(acedGetFunCode(), 0);
  fails = false;
  EXPECT_EQ(called(L"f"), "5");
}

}  // namespace
