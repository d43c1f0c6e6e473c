/* Is this program the suite's main host? Status 0 when the library says what the argument says. */
#include "tarvane/tarvane.h"

int main(int count, char** arguments) {
    const int32_t expected = count == 2 && arguments[1][0] == '1' ? 1 : 0;
    return count == 2 && IS_MAIN_HOST() == expected ? 0 : 1;
}
