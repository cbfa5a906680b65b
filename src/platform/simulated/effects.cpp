// Effects as lines for a person, for the messages of failing tests.
#include "platform/simulated/effects.h"

namespace tilora::simulated {
namespace {

struct Printer {
  std::ostream& out;

  void operator()(bool value) const { out << (value ? "true" : "false"); }
  void operator()(double value) const { out << value; }
  void operator()(const std::string& value) const { out << '"' << value << '"'; }
  void operator()(Point value) const { out << '(' << value.x << ", " << value.y << ')'; }
  void operator()(Size value) const { out << value.width << " x " << value.height; }
  void operator()(const SettingData& value) const { out << "data " << value.bytes; }
  void operator()(SettingDate value) const { out << "date " << value.time_since_epoch().count(); }

  void operator()(const AttributeWritten& effect) const {
    out << "setAttribute " << effect.window << ' ' << text(effect.name) << ' ';
    std::visit(*this, effect.value);
  }
  void operator()(const ApplicationHidden& effect) const { out << "hide " << effect.pid; }
  void operator()(const ApplicationUnhidden& effect) const { out << "unhide " << effect.pid; }
  void operator()(const SettingStored& effect) const {
    out << "store " << effect.key << ' ';
    std::visit(*this, effect.value);
  }
  void operator()(const HotKeyRegistered& effect) const {
    out << "registerHotKey " << effect.id << " key " << effect.keyCode << " modifiers " << effect.modifiers
        << (effect.registered ? "" : " failed");
  }
  void operator()(const HotKeyUnregistered& effect) const { out << "unregisterHotKey " << effect.id; }
  void operator()(const LoginItemRegistered& effect) const { out << "loginRegister" << (effect.ok ? "" : " failed"); }
  void operator()(const LoginItemUnregistered& effect) const { out << "loginUnregister" << (effect.ok ? "" : " failed"); }
  void operator()(const TrustRequested& effect) const { out << "requestTrust" << (effect.prompt ? " with prompt" : ""); }
  void operator()(const SelfActivated&) const { out << "activateSelf"; }
  void operator()(const UrlOpened& effect) const { out << "openURL " << effect.url; }
  void operator()(const KeyMonitorInstalled&) const { out << "installKeyMonitor"; }
  void operator()(const KeyMonitorRemoved&) const { out << "removeKeyMonitor"; }
};

}  // namespace

std::ostream& operator<<(std::ostream& out, const Effect& effect) {
  std::visit(Printer{out}, effect);
  return out;
}

}  // namespace tilora::simulated
