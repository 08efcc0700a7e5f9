// SPDX-License-Identifier: MIT
#include "fuzzing.h"

#include "rotctld/rotctldprotocol.h"

// Any bytes as a line from the network: an order is one that a rotator can carry out, and each answer is
// whole lines.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace Rotctld;
    const Request request = parse(bytesOf(data, size));
    require(request.azimuth >= 0.0 && request.azimuth < 360.0, "a target is on the compass");
    require((request.kind == Request::Refused) == (request.code != Done), "what is refused says why");
    for (const QByteArray &text : {answer(request, request.code), position(request, 359.9),
                                   position(request, std::nullopt), description(request, "Model")})
        require(text.endsWith('\n'), "an answer ends its line");
    return 0;
}
