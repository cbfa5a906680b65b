// Whether this process may control other programs' windows.
#pragma once

namespace tilora {

class Trust {
 public:
  virtual ~Trust() = default;

  /// Whether the process is trusted now (AXIsProcessTrusted). Cheap: asked four times a second.
  virtual bool isProcessTrusted() = 0;
  /// The same answer; with `prompt`, and while it is no, the desktop also asks the user, without waiting for what the user says
  /// (AXIsProcessTrustedWithOptions).
  virtual bool isProcessTrusted(bool prompt) = 0;
};

}  // namespace tilora
