#include "platform/code_page.h"

namespace fiar {

const CodePage& CodePage::system() {
  static const CodePage page(windows1252Characters());
  return page;
}

}  // namespace fiar
