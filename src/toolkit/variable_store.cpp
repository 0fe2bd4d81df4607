#include "toolkit/variable_store.h"

#include <utility>

namespace fiar {
namespace {

constexpr char16_t kConstantMark = u'_';
constexpr TextView kErrorNumber = u"err.number";
constexpr TextView kErrorDescription = u"err.description";

// The words in their order, with a space between them.
constexpr TextView kCommandWords =
    u"File Drive File.append File.savecontent File.copy File.dir File.run File.delete "
    u"File.CheckCreateFolder File.DateTime FileExists Path Access Send Counter Insert insertBody sql "
    u"txt math Replace ReplaceGlobal RemoveHtmlTags Delay Captcha getHostNameFromIp GetIpFromHostName "
    u"ping if rem cleanText enCode.pass deCode.pass redirectTo getFileFromWeb rndLineFromWeb "
    u"rndLineFromFile getImgFromText getImgFileFromText For url.decode url.encode Stop genUnikatStr "
    u"mail debug MP3 CGI Cookie Environ rnd split join left right mid instr ltrim rtrim trim ucase "
    u"lcase chr asc reverse CountSubString strcontains len datediff var svar to.utf8 to.ascii "
    u"plaintohtml format xml.getTag now sendSMS end Cache";

}  // namespace

void VariableStore::setVar(TextView name, Text value) {
  // A copy: the name may be a view of the very entry that is about to be replaced.
  Text key(name);
  const auto found = entries_.find(name);
  if (found == entries_.end()) {
    entries_.emplace(std::move(key), std::move(value));
  } else if (name.starts_with(kConstantMark)) {
    setVar(kErrorNumber, u"100001");
    setVar(kErrorDescription, u"Assignment to constant not permitted");
    return;
  } else {
    // Removed and filed anew: the name is kept as it was written last.
    auto entry = entries_.extract(found);
    entry.key() = std::move(key);
    entry.mapped() = std::move(value);
    entries_.insert(std::move(entry));
  }
  ++revision_;
}

void VariableStore::setVar(TextView name, double value) {
  setVar(name, platform_.regional.numberText(value));
}

void VariableStore::setVar(TextView name, const DateTime& value) {
  setVar(name, platform_.regional.dateTimeText(value));
}

Text VariableStore::getVar(TextView name) const {
  const Text* const value = findVar(name);
  return value == nullptr ? Text() : *value;
}

const Text* VariableStore::findVar(TextView name) const {
  const auto found = entries_.find(name);
  return found == entries_.end() ? nullptr : &found->second;
}

Text VariableStore::getEnvVar(TextView name) const {
  Text value = platform_.environment.variable(name);
  return value.empty() ? getVar(u"env_" + Text(name)) : value;
}

void VariableStore::initBuiltInVars() {
  setVar(u"_EmptyDate", u"30.12.1899 00:00:00");
  setVar(u"_tab", u"\t");
  setVar(u"_cr", u"\r");
  setVar(u"_lf", u"\n");
  setVar(u"_crlf", u"\r\n");
  setVar(u"_nullChr", Text(1, u'\0'));
  setVar(u"_back", u"\b");
  setVar(u"_ff", u"\f");
  setVar(u"_vtab", u"\v");
  setVar(u"_now", platform_.clock.now());
  setVar(kErrorNumber, u"0");
  setVar(kErrorDescription, u"");
}

void VariableStore::buildCommandList() {
  commandList_.clear();
  for (const TextView word : split(kCommandWords, u" ")) commandList_.append(u":").append(word).append(u";");
}

}  // namespace fiar
