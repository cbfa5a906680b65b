// Whether windows can be controlled in this session, and in words what it lacks.
#pragma once

#include <string>
#include <vector>

#include "platform/trust.h"
#include "platform/x11/client_model.h"
#include "platform/x11/connection.h"
#include "platform/x11/x11_desktop.h"

namespace tilora::x11 {

/// Whether the server is one that Wayland compositors start for X11 programs: it shows a part of the desktop only.
bool isXwayland(const Connection& connection);

/// A sentence for everything that is missing; empty: all is there.
std::vector<std::string> missingSupport(const Connection& connection, const DesktopFacts& facts, bool xwayland);

/// Trust on X11: a real X server, a window manager with what is used here, and the user's consent.
class X11Trust : public Trust {
 public:
  /// All must outlive it.
  X11Trust(const Connection& connection, const ClientModel& model, MainQueue& mainQueue, Consent& consent);

  bool isProcessTrusted() override;
  /// With `prompt`, asks for consent. A session that lacks something is given a moment first: the window manager may still be starting.
  bool isProcessTrusted(bool prompt) override;
  /// The window manager or what it supports changed: a question that had to wait can be asked now.
  void supportChanged();
  /// What the session lacks at the moment.
  std::vector<std::string> missing() const { return missingSupport(connection_, model_.facts(), xwayland_); }

 private:
  void prompt();

  const Connection& connection_;
  const ClientModel& model_;
  MainQueue& mainQueue_;
  Consent& consent_;
  bool xwayland_;
  bool questionWaits_ = false;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tilora::x11
