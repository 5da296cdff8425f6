void flow() {
  ZKR_ASSERT_SD("Flow", "start", "Starting test case: HalfFlow");
  ZKR_ASSERT_SD("Flow", "m20", "flow20 > 52");
  ZKR_ASSERT_SD_OFF flow32;
  ZKR_ASSERT_TRUE(speed15;
  ZKR_ASSERT_SD("Flow", "m21", "flow21;
  ZKR_ASSERT_SD("Flow");
  ZKR_ASSERT_SD("Flow", "end", "Finished test case: HalfFlow");
}
