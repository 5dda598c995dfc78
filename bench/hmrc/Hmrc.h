#pragma once

// The two measurements of the HMRC client.

/// HMRC's answer becomes records, beside two libraries' documents.
int RunDecoding(int argc, char** argv);
/// Ever more clients fetched at once from a server that takes its time.
int RunFetching();
