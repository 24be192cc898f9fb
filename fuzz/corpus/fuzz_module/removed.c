/* Velmora Module File V1.0B */
/* Velmora Start Of Tool Includes */
#include "VlRnHtml.h"
/* Velmora Start Of user Includes */
#include <stdio.h>
static char _Vl_HTML_Filename[] = "shop.html";
/*Velmora Start of Function */
static void Fgone ()
/* start of initial code */
{
/* start of func Code */
x;
/* end of func code */
/* start of final code */
}/* end of final code */
/*Velmora Start of Function */
static void Xodd ()
/* start of initial code */
{
/* start of func Code */
/* end of func code */
/* start of final code */
}/* end of final code */
/*Velmora Start of Function */
static void Ahome ()
/* start of initial code */
{
/* start of func Code */
/* end of func code */
/* start of final code */
}/* end of final code */
void R_shop_html()
{
	VlRegisterHtmlAlias("x__Fshop_html","gone__Fshop_html");
	VlRegisterHtmlAlias("z__Fshop_html","nodoublescore");

}/* Velmora End of Module */
