#pragma once

#include "platform/http.h"

#include <curl/curl.h>
#include <memory>
#include <string>
#include <string_view>

/// What this program asks of the transfer library, and what it reads out of the library's answers.
namespace kestrova::platform
{

struct AddressEnd {
    void operator()(CURLU* address) const { curl_url_cleanup(address); }
};
using Address = std::unique_ptr<CURLU, AddressEnd>;

/// The address in parts, with what no address holds (blanks, letters beyond ASCII) encoded; null
/// for one that is none of the web, and for one with a name or a password in it.
Address ReadAddress(const std::string& url);
/// The address as it is sent, whole.
std::string WholeAddress(CURLU* address);

/// What holds for every transfer.
void SetRules(CURL* easy, const HttpOptions& options);

/// What a later request may name the file by: a tag that stands for its bytes, or else its time.
std::string ValidatorOf(CURL* easy);
/// Of an answer that brings a part where it lies in the whole file. False when it does not say so.
bool ReadPart(CURL* easy, HttpAnswer& answer);
/// Why a transfer ended. `redirected`: the server led to another address before.
HttpError KindOf(CURLcode code, bool redirected);

} // namespace kestrova::platform
