#pragma once

namespace benthor::tests {

/// Makes the font of the application as large as BENTHOR_TEST_POINTS asks for, as a desktop would have it. To
/// be called before the look is applied; does nothing where the variable is not set.
void takeAskedFont();

/// Takes high contrast into force where BENTHOR_TEST_CONTRAST is set.
void takeAskedContrast();

} // namespace benthor::tests
