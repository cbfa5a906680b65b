// Since which release of the system something is there.
#pragma once

#define TILORA_PLATFORM_macos(version) macos, introduced = version
#define API_AVAILABLE(platform) __attribute__((availability(TILORA_PLATFORM_##platform)))
