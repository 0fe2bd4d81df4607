#include "toolkit/toolkit.h"

#include <gtest/gtest.h>

#include "support/fake_platform.h"
#include "toolkit/clsZantorBas.h"

namespace fiar {
namespace {

// Writes down its letter when it is released.
class Witness {
public:
  Witness(std::string& record, char letter) : record_(record), letter_(letter) {}
  Witness(const Witness&) = delete;
  Witness& operator=(const Witness&) = delete;
  Witness(Witness&&) = delete;
  Witness& operator=(Witness&&) = delete;
  ~Witness() { record_ += letter_; }

private:
  std::string& record_;
  char letter_;
};

TEST(Toolkit, SharesOneInstanceOfEachClass) {
  test::FakePlatform machine;
  Toolkit toolkit(machine.platform);
  EXPECT_EQ(&toolkit.bas(), &toolkit.bas());
  EXPECT_EQ(&toolkit.file(), &toolkit.file());
  EXPECT_FALSE(toolkit.bas().IsRunningInIde());
  EXPECT_FALSE(toolkit.bas().IsRunningInIde());
}

TEST(Toolkit, ReleasesItsInstancesInOrderAndNothingElse) {
  test::FakePlatform machine;
  std::string released;
  {
    Toolkit toolkit(machine.platform);
    const auto hold = [&](ToolkitClass which, char letter) {
      toolkit.setInstance(which, std::make_shared<Witness>(released, letter));
    };
    hold(ToolkitClass::Math, '8');
    hold(ToolkitClass::CodeCod, '7');
    hold(ToolkitClass::Api, '2');
    hold(ToolkitClass::Bas, '1');
    hold(ToolkitClass::File, '4');
    hold(ToolkitClass::Xml, '6');
    hold(ToolkitClass::Mail, '3');
    hold(ToolkitClass::Web, '5');
    toolkit.variables().setVar(u"name", u"kept");
    toolkit.releaseToolkit();
    EXPECT_EQ(released, "12345678");
    EXPECT_EQ(toolkit.variables().getVar(u"name"), u"kept");
    EXPECT_FALSE(toolkit.bas().IsRunningInIde());
    hold(ToolkitClass::Web, 'e');
  }
  EXPECT_EQ(released, "12345678e");
}

}  // namespace
}  // namespace fiar
