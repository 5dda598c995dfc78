# What the user waits for: fetching, which may be cancelled, and the browser.

== Is cancelled and writes nothing
In C0001
    Press Ctrl+Tab
    The user cancels whatever takes long
    Click Fetch from HMRC
    # told once
    Message ...
Stored BRIXMTD_Employments: lID

== Is given authority in the browser
In C0001
    Press Ctrl+Tab
    Type Government Gateway user ID: gateway-2
    Give authority...
        HMRC gave authority for PAYE, National Insurance and Marriage Allowance records.
    Click Fetch from HMRC
    Text Result: ...19 items from HMRC...
