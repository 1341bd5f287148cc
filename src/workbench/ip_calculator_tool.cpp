// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>

#include "platform/text.h"
#include "workbench/reference_support.h"
#include "workbench/reference_tools.h"

namespace quirn {
namespace {

struct Subnet {
  std::uint32_t address = 0;
  int prefix = 32;

  // The bits that tell the hosts apart. Computed wide: a shift by 32 has no meaning in 32 bits.
  std::uint32_t wildcard() const { return static_cast<std::uint32_t>((std::uint64_t{1} << (32 - prefix)) - 1); }
  std::uint32_t network() const { return address & ~wildcard(); }
  std::uint32_t broadcast() const { return address | wildcard(); }
  std::uint64_t total() const { return std::uint64_t{wildcard()} + 1; }
  // RFC 3021: both addresses of a /31 are hosts; and the one of a /32 is.
  bool hasReservedEnds() const { return prefix < 31; }
  std::uint32_t firstHost() const { return network() + (hasReservedEnds() ? 1 : 0); }
  std::uint32_t lastHost() const { return broadcast() - (hasReservedEnds() ? 1 : 0); }
  std::uint64_t usable() const { return total() - (hasReservedEnds() ? 2 : 0); }
};

std::optional<int> numberUpTo(std::string_view digits, int highest) {
  const auto value = isDigits(digits) ? integerIn(digits) : std::nullopt;
  if (!value || *value > highest) return std::nullopt;
  return static_cast<int>(*value);
}

std::uint32_t addressIn(std::string_view text) {
  const auto octets = splitAt(text, '.');
  if (octets.size() != 4) throw TextToolError("An IPv4 address has four octets.");
  std::uint32_t address = 0;
  for (const std::string_view octet : octets) {
    const auto value = numberUpTo(octet, 255);
    if (!value) throw TextToolError("Each octet must be 0–255.");
    address = address << 8 | static_cast<std::uint32_t>(*value);
  }
  return address;
}

Subnet subnetIn(std::string_view text) {
  const auto pieces = splitAt(text, '/');
  if (pieces.size() > 2) throw TextToolError("Use the form 192.168.1.10/24.");
  const auto prefix = pieces.size() == 2 ? numberUpTo(pieces[1], 32) : 32;
  if (!prefix) throw TextToolError("Prefix length must be 0–32.");
  return {addressIn(pieces.front()), *prefix};
}

std::string dotted(std::uint32_t address) {
  return fmt::format("{}.{}.{}.{}", address >> 24, address >> 16 & 255, address >> 8 & 255, address & 255);
}

std::string calculated(std::string_view input, const TextToolOptions& /*options*/) {
  input = platform::trimmed(input);
  if (input.empty()) return "";
  const Subnet subnet = subnetIn(input);
  return fmt::format(
      "Address:    {}/{}\n"
      "Netmask:    {}\n"
      "Wildcard:   {}\n"
      "Network:    {}\n"
      "Broadcast:  {}\n"
      "First host: {}\n"
      "Last host:  {}\n"
      "Total IPs:  {}\n"
      "Usable:     {}",
      dotted(subnet.address), subnet.prefix, dotted(~subnet.wildcard()), dotted(subnet.wildcard()),
      dotted(subnet.network()), dotted(subnet.broadcast()), dotted(subnet.firstHost()), dotted(subnet.lastHost()),
      subnet.total(), subnet.usable());
}

}  // namespace

const TextTool& ipCalculatorTool() {
  static const TextTool tool{.id = "dev.ipcalc",
                             .name = "IP / CIDR Calculator",
                             .shortName = "ipcalc",
                             .icon = "network",
                             .category = OperationCategory::dev,
                             .aliases = {"ip", "ipcalc", "cidr", "subnet", "netmask", "network"},
                             .blurb = "Compute an IPv4 subnet's range, mask, and host counts. (IPv4 only.)",
                             .inputPlaceholder = "192.168.1.10/24…",
                             .sampleInput = "192.168.1.10/24",
                             .transform = calculated};
  return tool;
}

}  // namespace quirn
