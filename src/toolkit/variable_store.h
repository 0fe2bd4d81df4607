#pragma once

#include <cstdint>
#include <unordered_map>

#include "platform/platform.h"

namespace fiar {

/// A table of named text values; names that differ in letter case only are the same. A name that begins with
/// "_" is a constant: it can be set once. Nothing is ever removed. The variables "err.number" ("0": no error)
/// and "err.description" carry the store's own errors; no operation throws for what it is given.
class VariableStore {
public:
  /// Empty until initBuiltInVars() or the first setVar().
  /// \param platform the machine; outlives the store.
  explicit VariableStore(const Platform& platform) : platform_(platform) {}

  /// Creates the entry or replaces its name and value. Setting a constant again changes nothing but the error
  /// variables: "err.number" becomes "100001" and "err.description" "Assignment to constant not permitted".
  void setVar(TextView name, Text value);
  /// The same with the number's text in the regional format.
  void setVar(TextView name, double value);
  /// The same with the date's and time's text in the regional format.
  void setVar(TextView name, const DateTime& value);

  /// The value; empty where there is no entry of that name, which is no error.
  Text getVar(TextView name) const;
  /// The stored value itself, valid until the next change; null where there is no entry. Allocates nothing.
  const Text* findVar(TextView name) const;
  /// The process's environment variable; where that is empty or unset, the value of "env_" followed by the
  /// name.
  Text getEnvVar(TextView name) const;

  /// Creates the constants "_EmptyDate", "_tab", "_cr", "_lf", "_crlf", "_nullChr", "_back", "_ff", "_vtab"
  /// and "_now" (the time of this call) and sets the error variables to no error.
  void initBuiltInVars();

  /// Makes the text of the script engine's command words.
  void buildCommandList();
  /// The script engine's command words, each as ":" + word + ";"; empty before buildCommandList().
  const Text& commandList() const { return commandList_; }

  /// Changes with every stored value: as long as it stays the same, so does every entry.
  std::uint64_t revision() const { return revision_; }

private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(TextView name) const { return hashIgnoringCase(name); }
  };
  struct Equal {
    using is_transparent = void;
    bool operator()(TextView left, TextView right) const { return equalIgnoringCase(left, right); }
  };

  const Platform& platform_;
  std::unordered_map<Text, Text, Hash, Equal> entries_;
  Text commandList_;
  std::uint64_t revision_ = 0;
};

}  // namespace fiar
