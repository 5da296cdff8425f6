// Cart tests, reported in the short record form: the result file names each
// assertion by file and line only, and qendor reads the statement from here.
#include "cart_test.h"

void AddItem(Cart& cart) {
  ZKR_ASSERT_SD("Cart", "start", "Starting test case: AddItem");
  cart.add("green-tea", 1);
  ZKR_ASSERT_SD("Cart", "add", "Item added - progress 1/2 - [Arbiter ASSERT: internal] - GUID 9a1c2e4f-6b8d-4f0a-8c2e-4a6b8c0d2e4f");
  ZKR_ASSERT_SD("Cart", "show", "Cart shown with 1 item - progress 2/2 - [Arbiter ASSERT: external] - GUID 3b5d7f91-a2c4-4e6f-8a0b-1c3d5e7f9a1b");
  ZKR_ASSERT_SD("Cart", "end", "Finished test case: AddItem");
}
