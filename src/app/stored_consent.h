// The user's consent: asked in a dialog, kept in a store.
#pragma once

#include "app/consent_request.h"
#include "platform/settings_store.h"
#include "platform/x11/x11_desktop.h"

namespace tilora::app {

/// Given once the user chose to start, in this run or an earlier one; an answer of no is not kept, so that a later start asks again. Main
/// thread only.
class StoredConsent : public x11::Consent {
 public:
  /// Both must outlive it.
  StoredConsent(SettingsStore& store, ConsentRequest& request) : store_(store), request_(request) {}

  bool isGiven() override;
  /// The user gives it, or takes it back.
  void set(bool given);
  void ask(const std::vector<std::string>& missing) override;

 private:
  SettingsStore& store_;
  ConsentRequest& request_;
};

}  // namespace tilora::app
