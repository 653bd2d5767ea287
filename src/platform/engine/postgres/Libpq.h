#pragma once

#include <QtGlobal>

#include <libpq-fe.h>

/// The client library of PostgreSQL, loaded when the first crib on a server is opened: it brings two dozen libraries
/// along, for which a crib in a file would pay a sixth of a window's memory at every start.
struct Libpq {
#define LIBPQ_FUNCTION(name) decltype(&::PQ##name) name = reinterpret_cast<decltype(&::PQ##name)>(function("PQ" #name))
    LIBPQ_FUNCTION(backendPID);
    LIBPQ_FUNCTION(cancel);
    LIBPQ_FUNCTION(clear);
    LIBPQ_FUNCTION(cmdStatus);
    LIBPQ_FUNCTION(cmdTuples);
    LIBPQ_FUNCTION(connectionNeedsPassword);
    LIBPQ_FUNCTION(connectStartParams);
    LIBPQ_FUNCTION(consumeInput);
    LIBPQ_FUNCTION(enterPipelineMode);
    LIBPQ_FUNCTION(errorMessage);
    LIBPQ_FUNCTION(exitPipelineMode);
    LIBPQ_FUNCTION(finish);
    LIBPQ_FUNCTION(flush);
    LIBPQ_FUNCTION(fname);
    LIBPQ_FUNCTION(freeCancel);
    LIBPQ_FUNCTION(freemem);
    LIBPQ_FUNCTION(ftype);
    LIBPQ_FUNCTION(getCancel);
    LIBPQ_FUNCTION(getisnull);
    LIBPQ_FUNCTION(getlength);
    LIBPQ_FUNCTION(getResult);
    LIBPQ_FUNCTION(getvalue);
    LIBPQ_FUNCTION(isBusy);
    LIBPQ_FUNCTION(nfields);
    LIBPQ_FUNCTION(notifies);
    LIBPQ_FUNCTION(ntuples);
    LIBPQ_FUNCTION(pingParams);
    LIBPQ_FUNCTION(pipelineSync);
    LIBPQ_FUNCTION(putCopyData);
    LIBPQ_FUNCTION(putCopyEnd);
    LIBPQ_FUNCTION(reset);
    LIBPQ_FUNCTION(resultErrorField);
    LIBPQ_FUNCTION(resultStatus);
    LIBPQ_FUNCTION(sendDescribePrepared);
    LIBPQ_FUNCTION(sendPrepare);
    LIBPQ_FUNCTION(sendQuery);
    LIBPQ_FUNCTION(sendQueryParams);
    LIBPQ_FUNCTION(sendQueryPrepared);
    LIBPQ_FUNCTION(serverVersion);
    LIBPQ_FUNCTION(setErrorVerbosity);
    LIBPQ_FUNCTION(setnonblocking);
    LIBPQ_FUNCTION(setNoticeProcessor);
    LIBPQ_FUNCTION(setSingleRowMode);
    LIBPQ_FUNCTION(socket);
    LIBPQ_FUNCTION(status);
#undef LIBPQ_FUNCTION

private:
    static QFunctionPointer function(const char *name);
};

/// @throws EngineError where the library, or one of its functions, is missing
const Libpq &libpq();
