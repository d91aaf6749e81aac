#include "serve/serving.h"

#include <chrono>
#include <dlfcn.h>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

#include "device/open_device.h"
#include "library_path.h"
#include "serve/http/exchange.h"
#include "serve/http/server.h"
#include "serve/keyboards.h"
#include "serve/routes.h"

namespace tools::serve {

using host::files::DeviceRoot;

namespace {

constexpr const char* kModuleName = "prismal-http.so";

/// Beside the library that belongs to this program.
http::MakeTranslator* loadModule() {
  const auto path = libraryPath().replace_filename(kModuleName);
  void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const symbol = module ? dlsym(module, http::kModuleSymbol) : nullptr;
  if (!symbol) throw std::runtime_error(dlerror());
  return reinterpret_cast<http::MakeTranslator*>(symbol);
}

void takeUsersSettings(UserSettings& settings, const device::Place& place) {
  if (!place) return;
  const auto device = device::openDevice(place, DeviceRoot::Creation::kNever);
  if (!device) throw std::runtime_error(device.reason());
  if (const auto taken = settings.takeFrom(*device); !taken) {
    throw std::runtime_error(taken.reason());
  }
}

/// The supervisor was killed, and nobody else is left to do it. Keyboards that end meanwhile clear
/// away their devices too, so that what was there a moment ago may be gone.
void clearAway(const std::filesystem::path& session) {
  constexpr auto kBetweenTries = std::chrono::milliseconds(20);
  constexpr int kTries = 100;
  std::error_code error;
  for (int tries = 0; tries < kTries && std::filesystem::exists(session, error); ++tries) {
    std::filesystem::remove_all(session, error);
    std::this_thread::sleep_for(kBetweenTries);
  }
}

}  // namespace

void serve(const ServerPlace& place) {
  UserSettings settings(place.session / "user");
  takeUsersSettings(settings, place.options.device);
  HostStarter starter(place.channel, place.session);
  std::unique_ptr<http::Server> server;
  Keyboards keyboards(
      place.options, starter, settings,
      [&](const std::string& event, const Json& data) { server->broadcast(eventOf(event, data)); });
  const Routes routes(place.options, keyboards, settings);
  const std::unique_ptr<http::Translator> translator(
      loadModule()([&](const http::Request& request) { return routes.answer(request); }));
  server = std::make_unique<http::Server>(
      std::move(place.listeners.sockets), place.listeners.port, *translator,
      [&] { return routes.greeting(); }, Routes::isQuick);
  auto end = Keyboards::End::kAsked;
  std::thread follower([&] {
    end = keyboards.run(place.channel);
    server->stop();
  });
  server->run();
  follower.join();
  if (end == Keyboards::End::kAbandoned) clearAway(place.session);
}

}  // namespace tools::serve
