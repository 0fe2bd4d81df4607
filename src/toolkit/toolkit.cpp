#include "toolkit/toolkit.h"

#include <utility>

#include "toolkit/clsZantorBas.h"
#include "toolkit/clsZantorFile.h"
#include "toolkit/clsZantorMail.h"

namespace fiar {

Toolkit::Toolkit(const Platform& platform) : platform_(platform), variables_(platform) {}

Toolkit::~Toolkit() {
  releaseToolkit();
}

template <class Type, class Argument>
Type& Toolkit::instance(ToolkitClass which, Argument& argument) {
  std::shared_ptr<void>& held = instances_[static_cast<std::size_t>(which)];
  if (!held) held = std::make_shared<Type>(argument);
  return *static_cast<Type*>(held.get());
}

clsZantorBas& Toolkit::bas() {
  return instance<clsZantorBas>(ToolkitClass::Bas, platform_);
}
clsZantorFile& Toolkit::file() {
  return instance<clsZantorFile>(ToolkitClass::File, *this);
}
clsZantorMail& Toolkit::mail() {
  return instance<clsZantorMail>(ToolkitClass::Mail, *this);
}

void Toolkit::releaseToolkit() {
  for (std::shared_ptr<void>& held : instances_) held.reset();
}

void Toolkit::setInstance(ToolkitClass which, std::shared_ptr<void> instance) {
  instances_[static_cast<std::size_t>(which)] = std::move(instance);
}

}  // namespace fiar
