#pragma once

#include <string>
#include <vector>

#include "probe/platform/url_opener.h"

namespace tarnix::fakes {

class FakeUrlOpener : public platform::UrlOpener {
 public:
  void open(const Url& url) override { opened.push_back(url.absoluteString()); }

  std::vector<std::string> opened;
};

}  // namespace tarnix::fakes
