// The checks that come before the word success: identity, version and both checksums.
#pragma once

#include "host/update/UpdateSteps.h"

namespace hx {

class UpdateVerification {
public:
    // Without an image the product's answers are held against each other alone.
    UpdateVerification(UpdateSteps& steps, ProductReader& reader, const UpdateImage* image);

    // False when a check fails; `steps` then hold the outcome, `whenSilent` when no product
    // answers to the identity request.
    bool passes(UpdateOutcome whenSilent);

    // Whether the product holds code of the image's kind, as far as it tells; then, and when it
    // tells none, true. `steps` hold what it told.
    bool kindFits();

private:
    bool identifyAgain(UpdateOutcome whenSilent);
    void readAll();
    bool versionAgrees() const;
    bool checksumsAgree() const;
    bool wasReadToTheEnd();
    bool checkVersion();
    bool checkChecksums();
    CodeType kindTold();

    UpdateSteps& m_steps;
    UpdateResult& m_result;
    ProductReader& m_reader;
    const UpdateImage* m_image;
};

} // namespace hx
