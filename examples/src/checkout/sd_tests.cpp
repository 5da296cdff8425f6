// Sequence diagram tests of the checkout. Each ZKR_ASSERT_SD names the SD
// instance and the message, and its text carries what the report reads: the
// user message, the progress through the diagram (step/last step), the
// numbers of the message pair, the arbiter kind and the GUID of the message.
#include "checkout_test.h"

void PlaceOrder(Checkout& shop) {
  ZKR_ASSERT_SD("Checkout", "start", "Starting test case: PlaceOrder");
  shop.addToCart("espresso-beans", 2);
  shop.placeOrder();
  ZKR_ASSERT_SD("Checkout", "placeOrder", "Order placed - progress 1/4 - no:1,2 - [Arbiter ASSERT: internal] - GUID 1b4e28ba-2fa1-11d2-883f-0016d3cca427");
  if (shop.customer().hasCard()) {
    ZKR_ASSERT_SD("Checkout", "payByCard", "Card payment authorised - progress 2/4 - no:3,4 - [Arbiter ASSERT: external] - GUID 6fa459ea-ee8a-3ca4-894e-db77e160355e");
  } else {
    ZKR_ASSERT_SD("Checkout", "payByInvoice", "Invoice issued - progress 3/4 - no:5,6 - [Arbiter ASSERT: external] - GUID 886313e1-3b8a-5372-9b90-0c9aee199e5d");
  }
  ZKR_ASSERT_SD("Checkout", "confirm", "Order confirmed - progress 4/4 - no:7,8 - [Arbiter ASSERT: internal] - GUID 0f8fad5b-d9cb-469f-a165-70867728950e");
  ZKR_ASSERT_SD("Checkout", "end", "Finished test case: PlaceOrder");
}

void PayWithCoupon(Checkout& shop) {
  ZKR_ASSERT_SD("Checkout", "start", "Starting test case: PayWithCoupon");
  ZKR_ASSERT_SD("Checkout", "openCart", "Cart opened - progress 1/4 - no:1,2 - [Arbiter ASSERT: internal] - GUID 7c9e6679-7425-40de-944b-e07fc1f90ae7");
  for (const auto& coupon : shop.customer().coupons()) {
    shop.applyCoupon(coupon);
    ZKR_ASSERT_SD("Checkout", "applyCoupon", "Coupon applied - progress 2/4 - no:3,4 - [Arbiter ASSERT: internal] - GUID 9c858901-8a57-4791-81fe-4c455b099bc9");
  }
  ZKR_ASSERT_SD("Checkout", "validateCoupons", "Coupons validated - progress 3/4 - no:5,6 - [Arbiter ASSERT: external] - GUID 16fd2706-8baf-433b-82eb-8c7fada847da");
  shop.pay();
  ZKR_ASSERT_SD("Checkout", "pay", "Payment taken - progress 4/4 - no:7,8 - [Arbiter ASSERT: external] - GUID 3f333df6-90a4-4fda-8dd3-9485d27cee36");
  ZKR_ASSERT_SD("Checkout", "end", "Finished test case: PayWithCoupon");
}

void CancelOrder(Checkout& shop) {
  ZKR_ASSERT_SD("Checkout", "start", "Starting test case: CancelOrder");
  ZKR_ASSERT_SD("Checkout", "cancel", "Cancellation requested - progress 1/4 - no:1,2 - [Arbiter ASSERT: internal] - GUID e4eaaaf2-d142-11e1-b3e4-080027620cdd");
  if (shop.order().isPaid()) {
    ZKR_ASSERT_SD("Checkout", "refund", "Refund started - progress 2/4 - no:3,4 - [Arbiter ASSERT: external] - GUID 21ec2020-3aea-1069-a2dd-08002b30309d");
  }
  ZKR_ASSERT_SD("Checkout", "release", "Stock released - progress 3/4 - no:5,6 - [Arbiter ASSERT: internal] - GUID 5e1e8b6a-1d0b-4c3e-9f7a-2b6c4d8e0f12");
  shop.waitForMail();
  ZKR_ASSERT_SD("Checkout", "mail", "Cancellation mail sent - progress 4/4 - no:7,8 - [Arbiter ASSERT: external] - GUID a8098c1a-f86e-11da-bd1a-00112444be1e");
  ZKR_ASSERT_SD("Checkout", "end", "Finished test case: CancelOrder");
}

void ApplyVoucher(Checkout& shop) {
  ZKR_ASSERT_SD("Checkout", "start", "Starting test case: ApplyVoucher");
  ZKR_ASSERT_SD("Checkout", "enterVoucher", "Voucher entered - progress 1/3 - no:1,2 - [Arbiter ASSERT: internal] - GUID 2c5ea4c0-4067-11e9-8bad-9b1deb4d3b7d");
  ZKR_ASSERT_SD("Checkout", "discount", "Discount of 10 % shown - progress 2/3 - no:3,4 - [Arbiter ASSERT: external] - GUID 4d3a1c6e-8f2b-4e7a-b5c9-1a2b3c4d5e6f");
  ZKR_ASSERT_SD("Checkout", "total", "Total updated - progress 3/3 - no:5,6 - [Arbiter ASSERT: internal] - GUID 8b1a9953-c461-4e2d-b4e9-5f6a7b8c9d0e");
  ZKR_ASSERT_SD("Checkout", "end", "Finished test case: ApplyVoucher");
}

void AbortByUser(Checkout& shop) {
  ZKR_ASSERT_SD("Checkout", "start", "Starting test case: AbortByUser");
  ZKR_ASSERT_SD("Checkout", "openCart", "Cart opened - progress 1/4 - no:1,2 - [Arbiter ASSERT: internal] - GUID 7c9e6679-7425-40de-944b-e07fc1f90ae7");
  ZKR_ASSERT_SD("Checkout", "address", "Address entered - progress 2/4 - no:3,4 - [Arbiter ASSERT: internal] - GUID c9bf9e57-1685-4c89-bafb-ff5af830be8a");
  if (shop.customer().closedBrowser()) {
    ZKR_ASSERT_SD("Checkout", "exit", "Customer left the checkout - NOFAIL_INTENDED_USER_EXIT");
    return;
  }
  ZKR_ASSERT_SD("Checkout", "pay", "Payment taken - progress 3/4 - no:5,6 - [Arbiter ASSERT: external] - GUID 3f333df6-90a4-4fda-8dd3-9485d27cee36");
  ZKR_ASSERT_SD("Checkout", "confirm", "Order confirmed - progress 4/4 - no:7,8 - [Arbiter ASSERT: internal] - GUID 0f8fad5b-d9cb-469f-a165-70867728950e");
  ZKR_ASSERT_SD("Checkout", "end", "Finished test case: AbortByUser");
}
