#pragma once

#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/database.h"
#include "platform/environment.h"
#include "platform/pending_events.h"
#include "platform/random_generator.h"
#include "platform/regional_format.h"
#include "platform/resources.h"
#include "platform/socket_control.h"
#include "platform/sound_player.h"

namespace fiar {

/// Everything that the program asks of the machine. Only refers: whoever makes it owns the services and keeps
/// them alive for as long as the program runs.
struct Platform {
  const Clock& clock;
  const CodePage& codePage;
  const RegionalFormat& regional;
  const Environment& environment;
  const Resources& resources;
  RandomGenerator& random;
  SoundPlayer& sound;
  PendingEvents& events;
  Database& database;
  SocketFactory* sockets = nullptr;  ///< null where nothing uses the network
};

}  // namespace fiar
