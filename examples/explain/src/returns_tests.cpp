// Test cases of the returns desk, written against the generated application.
#include "zkr_assert.h"

void RefundOrder() {
  ZKR_ASSERT_SD("Returns", "start", "Starting test case: RefundOrder");
  ZKR_ASSERT_SD("Returns", "request", "Refund requested - progress 1/5");
  ZKR_ASSERT_SD("Returns", "refundToCard", "Refund to the card - progress 2/5");
  ZKR_ASSERT_SD("Returns", "voucher", "Voucher issued - progress 3/5");
  ZKR_ASSERT_SD("Returns", "mail", "Refund mail sent - progress 4/5");
  ZKR_ASSERT_SD("Returns", "closeCase", "Case closed - progress 5/5");
  ZKR_ASSERT_SD("Returns", "end", "Finished test case: RefundOrder");
}

void ReturnParcel() {
  ZKR_ASSERT_TRUE("Starting test case: ReturnParcel");
  ZKR_ASSERT_TRUE(cart.count() == 1);
  ZKR_ASSERT_TRUE(order.isPaid());
  ZKR_ASSERT_TRUE("Finished test case: ReturnParcel");
}
