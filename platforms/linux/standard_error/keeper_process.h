#pragma once

namespace tarnix::linux_platform {

/// Starts the process that looks after a diverted stream when this one cannot: after its end,
/// whichever way it ends, and after it has executed another program. Until then it sleeps. It
/// passes on what is left in the pipe, and what children of the host still write, to `destination`.
///
/// The host cannot tell: it is no child that `wait` knows of, it causes no signal, and it holds
/// nothing of the host's but the stream. Where no process may be started there is no keeper, and
/// what is in the pipe at a sudden end is lost.
void startKeeper(int readEnd, int destination);

}  // namespace tarnix::linux_platform
