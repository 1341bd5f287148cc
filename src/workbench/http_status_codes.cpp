// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/http_status_codes.h"

#include <array>

namespace quirn {
namespace {

constexpr auto statusCodes = std::to_array<HttpStatus>({
    {100, "Continue", "Client should continue with the request body."},
    {101, "Switching Protocols", "Server is switching protocols per Upgrade."},
    {102, "Processing", "Request received; still being processed (WebDAV)."},
    {103, "Early Hints", "Preload hints sent before the final response."},
    {200, "OK", "Request succeeded."},
    {201, "Created", "Request succeeded and a new resource was created."},
    {202, "Accepted", "Request accepted but not yet processed."},
    {203, "Non-Authoritative Information", "Returned metadata is from a copy, not the origin."},
    {204, "No Content", "Success with no response body."},
    {205, "Reset Content", "Success; client should reset the document view."},
    {206, "Partial Content", "Partial resource returned for a range request."},
    {207, "Multi-Status", "Multiple independent status codes (WebDAV)."},
    {208, "Already Reported", "Members already enumerated (WebDAV)."},
    {226, "IM Used", "Result of one or more instance manipulations."},
    {300, "Multiple Choices", "Several possible responses; client chooses."},
    {301, "Moved Permanently", "Resource moved permanently to a new URL."},
    {302, "Found", "Resource temporarily at a different URL."},
    {303, "See Other", "Retrieve the resource at another URL with GET."},
    {304, "Not Modified", "Cached copy is still valid; not re-sent."},
    {307, "Temporary Redirect", "Temporary redirect; keep the original method."},
    {308, "Permanent Redirect", "Permanent redirect; keep the original method."},
    {400, "Bad Request", "Malformed request the server can't understand."},
    {401, "Unauthorized", "Authentication required or failed."},
    {402, "Payment Required", "Reserved for future / payment-gated use."},
    {403, "Forbidden", "Authenticated but not allowed to access this."},
    {404, "Not Found", "The requested resource doesn't exist."},
    {405, "Method Not Allowed", "HTTP method not supported for this resource."},
    {406, "Not Acceptable", "No representation matches the Accept headers."},
    {407, "Proxy Authentication Required", "Authenticate with the proxy first."},
    {408, "Request Timeout", "Client took too long to send the request."},
    {409, "Conflict", "Request conflicts with the resource's current state."},
    {410, "Gone", "Resource is permanently gone."},
    {411, "Length Required", "Content-Length header is required."},
    {412, "Precondition Failed", "A request precondition was not met."},
    {413, "Payload Too Large", "Request body is larger than the server allows."},
    {414, "URI Too Long", "Request URI is longer than the server accepts."},
    {415, "Unsupported Media Type", "Request body format isn't supported."},
    {416, "Range Not Satisfiable", "Requested range is out of bounds."},
    {417, "Expectation Failed", "The Expect header can't be met."},
    {418, "I'm a teapot", "Refuses to brew coffee (RFC 2324 joke code)."},
    {421, "Misdirected Request", "Request sent to a server that can't respond to it."},
    {422, "Unprocessable Entity", "Well-formed but semantically invalid."},
    {423, "Locked", "Resource is locked (WebDAV)."},
    {424, "Failed Dependency", "Request failed due to a prior request (WebDAV)."},
    {425, "Too Early", "Server won't risk replay of an early request."},
    {426, "Upgrade Required", "Client must switch to a different protocol."},
    {428, "Precondition Required", "Server requires a conditional request."},
    {429, "Too Many Requests", "Client is being rate-limited."},
    {431, "Request Header Fields Too Large", "Headers are too large to process."},
    {451, "Unavailable For Legal Reasons", "Blocked for legal reasons."},
    {500, "Internal Server Error", "Generic server-side failure."},
    {501, "Not Implemented", "Server doesn't support the requested feature."},
    {502, "Bad Gateway", "Invalid response from an upstream server."},
    {503, "Service Unavailable", "Server is overloaded or down for maintenance."},
    {504, "Gateway Timeout", "Upstream server didn't respond in time."},
    {505, "HTTP Version Not Supported", "HTTP version isn't supported."},
    {507, "Insufficient Storage", "Server can't store the representation (WebDAV)."},
    {508, "Loop Detected", "Infinite loop while processing (WebDAV)."},
    {511, "Network Authentication Required", "Authenticate to gain network access."},
});

}  // namespace

std::span<const HttpStatus> httpStatusCodes() {
  return statusCodes;
}

std::string_view httpStatusClass(std::int64_t code) {
  switch (code / 100) {
    case 1: return "1xx Informational";
    case 2: return "2xx Success";
    case 3: return "3xx Redirection";
    case 4: return "4xx Client Error";
    case 5: return "5xx Server Error";
    default: return "Unknown";
  }
}

}  // namespace quirn
