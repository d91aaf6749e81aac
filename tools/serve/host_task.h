#pragma once

#include <cstdint>
#include <string>

#include "keyboard/words.h"
#include "serve/message.h"
#include "serve/question.h"

namespace tools::serve {

/// What a process with a keyboard is there for.
enum class Role : std::uint8_t {
  performer,  ///< shows views one after the other, as a device's keyboard does, and draws them
  answerer,   ///< has shown nothing, and answers each question in a copy of itself
  checker,    ///< looks through the theme once
  decoder,    ///< finds out whether a file that a user has chosen is a picture
};

inline constexpr keyboard::Word<Role> kRoles[] = {{"performer", Role::performer},
                                                  {"answerer", Role::answerer},
                                                  {"checker", Role::checker},
                                                  {"decoder", Role::decoder}};

/// What is asked for: of a performer the first two, of an answerer all.
enum class Wish : std::uint8_t { picture, keys, explanation, rule, sheet };

inline constexpr keyboard::Word<Wish> kWishes[] = {{"picture", Wish::picture},
                                                   {"keys", Wish::keys},
                                                   {"explanation", Wish::explanation},
                                                   {"rule", Wish::rule},
                                                   {"sheet", Wish::sheet}};

/// Which process is to be started.
struct HostTask {
  std::uint64_t number = 0;
  Role role = Role::performer;
  Look look = Look::theme;
  std::string settings = {};  ///< the user's settings file, a path of this machine; empty: none
  Parameters first = {};      ///< of the picture with which a performer begins; empty: none
};

Json jsonOf(const HostTask& task);
/// What jsonOf has made.
HostTask taskOf(const Json& json);

Json jsonOf(const Parameters& parameters);
Parameters parametersOf(const Json& json);

/// A wish with its parameters, as the head of a message.
Json jsonOf(Wish wish, const Parameters& parameters);

}  // namespace tools::serve
