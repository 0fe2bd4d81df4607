#include "toolkit/toolkit.h"

#include <gtest/gtest.h>

#include "support/fake_platform.h"
#include "toolkit/clsZantorBas.h"

namespace fiar {
namespace {

TEST(Toolkit, SharesOneInstanceOfEachClass) {
  test::FakePlatform machine;
  Toolkit toolkit(machine.platform);
  EXPECT_EQ(&toolkit.bas(), &toolkit.bas());
  EXPECT_EQ(&toolkit.file(), &toolkit.file());
  EXPECT_EQ(&toolkit.xml(), &toolkit.xml());
  EXPECT_EQ(&toolkit.codeCod(), &toolkit.codeCod());
  EXPECT_FALSE(toolkit.bas().IsRunningInIde());
  EXPECT_FALSE(toolkit.bas().IsRunningInIde());
}

TEST(Toolkit, ReleasesItsInstancesInOrderAndNothingElse) {
  test::FakePlatform machine;
  std::string released;
  {
    Toolkit toolkit(machine.platform);
    const auto hold = [&](ToolkitClass which, char letter) {
      toolkit.setInstance(
          which, std::shared_ptr<void>(&released, [&released, letter](void*) { released += letter; }));
    };
    using enum ToolkitClass;
    char letter = '1';
    for (const ToolkitClass which : {Bas, Api, Mail, File, Web, Xml, CodeCod, Math}) hold(which, letter++);
    toolkit.variables().setVar(u"name", u"kept");
    toolkit.releaseToolkit();
    EXPECT_EQ(released, "12345678");
    EXPECT_EQ(toolkit.variables().getVar(u"name"), u"kept");
    EXPECT_FALSE(toolkit.bas().IsRunningInIde());
    hold(Web, 'e');
  }
  EXPECT_EQ(released, "12345678e");
}

}  // namespace
}  // namespace fiar
