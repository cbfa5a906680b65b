// Reading, asking for and keeping the consent.
#include "app/stored_consent.h"

#include <string_view>

namespace tilora::app {
namespace {

constexpr std::string_view consentKey = "Tilora.Consent";

}  // namespace

bool StoredConsent::isGiven() { return store_.boolValue(consentKey); }

void StoredConsent::ask(const std::vector<std::string>& missing) {
  request_.ask(missing, [this](bool given) {
    if (given) set(true);
  });
}

void StoredConsent::set(bool given) { store_.setBool(consentKey, given); }

}  // namespace tilora::app
