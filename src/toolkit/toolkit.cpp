#include "toolkit/toolkit.h"

#include <utility>

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

template <class Type, class... Arguments>
Type& Toolkit::instance(ToolkitClass which, Arguments&... arguments) {
  std::shared_ptr<void>& held = instances_[static_cast<std::size_t>(which)];
  if (!held) held = std::make_shared<Type>(arguments...);
  return *static_cast<Type*>(held.get());
}

clsZantorBas& Toolkit::bas() {
  return instance<clsZantorBas>(ToolkitClass::Bas, *this);
}
clsZantorFile& Toolkit::file() {
  return instance<clsZantorFile>(ToolkitClass::File, *this);
}
clsZantorMail& Toolkit::mail() {
  return instance<clsZantorMail>(ToolkitClass::Mail, *this);
}
clsZantorXml& Toolkit::xml() {
  return instance<clsZantorXml>(ToolkitClass::Xml);
}
clsZantorCodeCod& Toolkit::codeCod() {
  return instance<clsZantorCodeCod>(ToolkitClass::CodeCod, *this);
}

void Toolkit::releaseToolkit() {
  for (std::shared_ptr<void>& held : instances_) held.reset();
}

void Toolkit::setInstance(ToolkitClass which, std::shared_ptr<void> instance) {
  instances_[static_cast<std::size_t>(which)] = std::move(instance);
}

}  // namespace fiar
