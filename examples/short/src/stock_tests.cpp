// Stock bookkeeping of the cart. A statement may span several lines; it is
// known by the line that holds its closing ";".
#include "cart_test.h"

void RemoveItem(Cart& cart) {
  ZKR_ASSERT_TRUE("Starting test case: RemoveItem");
  cart.add("green-tea", 2);
  cart.remove("green-tea", 1);
  ZKR_ASSERT_TRUE(cart.count("green-tea") ==
                  1);
  // ZKR_ASSERT_TRUE(cart.isEmpty());  (commented out: never collected)
  ZKR_ASSERT_TRUE(stock.reserved("green-tea") == 1);
  ZKR_ASSERT_TRUE("Finished test case: RemoveItem");
}
