void run() {
  ZKR_ASSERT_TRUE("Starting test case: HalfCode");
  ZKR_ASSERT_TRUE(speed15;
  ZKR_ASSERT_TRUE(level25; // checked
  ZKR_ASSERT_TRUE(temp29;
  ZKR_ASSERT_TRUE("Finished test case: HalfCode");
}
