/* Velmora Module File V1.0B */
static char _Vl_HTML_Filename[] = "other.html";
