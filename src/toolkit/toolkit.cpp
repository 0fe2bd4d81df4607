#include "toolkit/toolkit.h"

#include "toolkit/clsZantorBas.h"
#include "toolkit/clsZantorCodeCod.h"
#include "toolkit/clsZantorFile.h"
#include "toolkit/clsZantorMail.h"
#include "toolkit/clsZantorXml.h"

namespace fiar {

Toolkit::Toolkit(const Platform& platform) : platform_(platform), variables_(platform) {}

Toolkit::~Toolkit() {
  releaseToolkit();
}

clsZantorBas& Toolkit::bas() {
  if (!bas_) bas_ = std::make_unique<clsZantorBas>(*this);
  return *bas_;
}
clsZantorFile& Toolkit::file() {
  if (!file_) file_ = std::make_unique<clsZantorFile>(*this);
  return *file_;
}
clsZantorMail& Toolkit::mail() {
  if (!mail_) mail_ = std::make_unique<clsZantorMail>(*this);
  return *mail_;
}
clsZantorXml& Toolkit::xml() {
  if (!xml_) xml_ = std::make_unique<clsZantorXml>();
  return *xml_;
}
clsZantorCodeCod& Toolkit::codeCod() {
  if (!codeCod_) codeCod_ = std::make_unique<clsZantorCodeCod>(*this);
  return *codeCod_;
}

void Toolkit::releaseToolkit() {
  bas_.reset();
  mail_.reset();
  file_.reset();
  xml_.reset();
  codeCod_.reset();
}

}  // namespace fiar
