#pragma once

#include "platform/database.h"

namespace fiar {

/// Stands for a database client where none is built in: opening it keeps the connect text and succeeds.
class RecordedDatabase final : public Database {
public:
  void open(TextView connectText) override { connectText_ = connectText; }

  /// The text of the last opening; empty before it.
  const Text& connectText() const { return connectText_; }

private:
  Text connectText_;
};

}  // namespace fiar
