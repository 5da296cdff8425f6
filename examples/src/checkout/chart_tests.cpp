// Action code of the two chart tests. The assertions stand in the chart's
// actions; the verification files repeat the chart so that the report can
// check that the assertions ran along a path of the chart.
#include "checkout_test.h"

// Statechart CartStates: Init -> Filled -> Paid -> End.
void CartStates_Init_entry(Cart& cart) {
  ZKR_ASSERT_TRUE("Starting test case: CartStates");
}
void CartStates_addItem_action(Cart& cart, const Item& item) { cart.add(item); }
void CartStates_Filled_entry(Cart& cart) {
  ZKR_ASSERT_TRUE(cart.count() == 1);
}
void CartStates_checkout_action(Cart& cart) {
  ZKR_ASSERT_TRUE(cart.total() > 0);
}
void CartStates_Paid_entry(Order& order) {
  ZKR_ASSERT_TRUE(order.isPaid());
}
void CartStates_End_entry() {
  ZKR_ASSERT_TRUE("Finished test case: CartStates");
}

// Flowchart ShippingFlow: Start -> CheckAddress -> (ShipDomestic | ShipAbroad) -> End.
void ShippingFlow_Start(Parcel& parcel) {
  ZKR_ASSERT_TRUE("Starting test case: ShippingFlow");
}
void ShippingFlow_CheckAddress(Parcel& parcel) {
  ZKR_ASSERT_TRUE(parcel.address().isValid());
}
void ShippingFlow_ShipDomestic(Parcel& parcel) {
  ZKR_ASSERT_TRUE(parcel.hasLabel());
}
void ShippingFlow_ShipAbroad(Parcel& parcel) {
  ZKR_ASSERT_TRUE(parcel.customs().isDeclared());
}
void ShippingFlow_End() {
  ZKR_ASSERT_TRUE("Finished test case: ShippingFlow");
}
