<?xml version="1.0" encoding="UTF-8"?>
<!-- Plain-text digest of a result document, one line per test case:
     name, status, verification result, and for SD tests coverage value/max.
     Used by run-demo.sh to compare a run with expected-statuses.txt. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="text" encoding="UTF-8"/>
  <xsl:template match="/">
    <xsl:for-each select="//TestCaseResult">
      <xsl:value-of select="@name"/>
      <xsl:text> | </xsl:text>
      <xsl:value-of select="@status"/>
      <xsl:text> | </xsl:text>
      <xsl:value-of select="@verificationResult"/>
      <xsl:for-each select="ResultForSD/SDSummaryInfo/SDResults/SDResult">
        <xsl:text> | coverage </xsl:text>
        <xsl:value-of select="@coverage"/>
        <xsl:text> % (</xsl:text>
        <xsl:value-of select="@value"/>
        <xsl:text>/</xsl:text>
        <xsl:value-of select="@max"/>
        <xsl:text>)</xsl:text>
      </xsl:for-each>
      <xsl:text>&#10;</xsl:text>
    </xsl:for-each>
    <xsl:for-each select="/TestResult/TestContextResult">
      <xsl:text>context | </xsl:text>
      <xsl:value-of select="@status"/>
      <xsl:text>&#10;</xsl:text>
    </xsl:for-each>
  </xsl:template>
</xsl:stylesheet>
