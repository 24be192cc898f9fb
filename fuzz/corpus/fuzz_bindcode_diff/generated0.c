{
	pSgeWorkCallData pSgeWCD;

	/********************************************************/
	/********* users initial code is inserted here **********/
	/********************************************************/

	pSgeWCD = getSgeWorkCallData(UxWidget,
		-1,
		"srv",
		"db.main",
		"orders", USE_IT);


	/* Brennix Bind Name : bind1 */
	SgeSetCallDetail(pSgeWCD, NO_CACHE,
		(XtPointer)ck,
		ROW_INDEX, (XtPointer)0x0,
		(XtPointer)0x0,
		NO_QUEUE_FILE);
	SgeVaSetFrags(pSgeWCD,
		"select * \
from t",
		"where x",
		VULL);
	VlVaSetReqOptions(pSgeWCD,
		"a : b",
		VULL);
	SgeSetColBind(pSgeWCD, "Page1|Entry", 1, 0, 10,
		(XtPointer)0x0,
		x:y.z
more);
	SgeSetColDetail(pSgeWCD, 12, 0, 0, 1,
		"char",
		"name");
	VlVaSetColOptions(pSgeWCD, 1,
		"w : 1",
		VULL);
	SgeSetArgBnd2(pSgeWCD, 56, -1, "p_id", "",
		"");

	DoWorkProc(pSgeWCD, PROCESSBRSREQUEST_ISQL);

	/*******************************************************/
	/********** users final code is inserted here **********/
	/*******************************************************/

	/*************** END OF VELMORA FINAL CODE  ***************************/
}