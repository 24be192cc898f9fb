/* Velmora Module File V1.0B */
/* Velmora Start Of Tool Includes */
#include "VlRnHtml.h"
/* Velmora Start Of user Includes */
#include <stdio.h>
static char _Vl_HTML_Filename[] = "shop.html";
/*Velmora Start of Function */
static void Forder ()
/* start of initial code */
{
	int n = 0;
/* start of func Code */
	n++;
/* end of func code */
/* start of final code */
	return;
}/* end of final code *