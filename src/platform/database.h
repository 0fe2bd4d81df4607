#pragma once

#include "platform/text.h"

namespace fiar {

/// The optional database connection. The game never uses it.
class Database {
public:
  virtual ~Database() = default;

  /// Opens the connection that the connect text describes; throws std::exception when it cannot.
  virtual void open(TextView connectText) = 0;
};

/// A query for the connection, empty until it is put.
struct DatabaseQuery {
  Text statement;
};

}  // namespace fiar
