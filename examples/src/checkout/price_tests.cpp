// Plain code tests of prices and payment.
#include "checkout_test.h"

void TotalPrice(Checkout& shop) {
  ZKR_ASSERT_TRUE("Starting test case: TotalPrice");
  shop.addToCart("espresso-beans", 2);  // 2 x 17.65
  shop.addToCart("milk-frother", 1);    // 1 x  6.70
  ZKR_ASSERT_EQUAL(shop.cart().count(), 3);
  ZKR_ASSERT_EQUAL(shop.cart().total(), 42.00);
  ZKR_ASSERT_STRING_EQUAL(shop.cart().currency(), "EUR");
  ZKR_ASSERT_TRUE("Finished test case: TotalPrice");
}

void PaymentTimeout(Checkout& shop) {
  ZKR_ASSERT_TRUE("Starting test case: PaymentTimeout");
  shop.gateway().setTimeout(std::chrono::seconds(30));
  ZKR_ASSERT_TRUE(shop.gateway().isReachable());
  shop.pay();  // the gateway never answers: the test process is killed here
  ZKR_ASSERT_TRUE(shop.order().isPaid());
  ZKR_ASSERT_TRUE("Finished test case: PaymentTimeout");
}
