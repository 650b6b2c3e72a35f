#pragma once

#include "platforms/qt6/network/host_request.h"
#include "platforms/qt6/shared/network_part.h"

class QNetworkReply;

/// Where every request of the application comes past, whichever class its manager is of.
///
/// A plain manager is called through the toolkit's own table of virtual functions; one whose class
/// the application derived calls the function by its name. Both ways are taken. Any thread.
namespace tarnix::qt6::request_hook {

/// Once. Returns whether the toolkit has what is needed.
bool install(const NetworkPartContext& context);

/// The request as the toolkit makes it.
QNetworkReply* callToolkit(const HostRequest& request);

/// A request of the application; also one that follows from another, such as a redirect of an
/// answer of ours.
QNetworkReply* createRequest(const HostRequest& request);

}  // namespace tarnix::qt6::request_hook
