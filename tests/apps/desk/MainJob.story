# The main job by a user's hands: fetch, create, review; and while HMRC's service is down half-way.

== Runs from the fetch to a rejected difference
In C0001
    Rows Schedules
    Press Ctrl+Tab
    Text Government Gateway user ID: gateway-1
    Click Fetch from HMRC
    Text Result: ...19 items from HMRC (19 new, 0 changed, 0 no longer sent). 9 are not in the return yet....
    Click Create schedules
    Text Result: ...Created 2 employment schedules and 7 pension or benefit schedules.\n...
    Rows Differences
    Press Ctrl+Shift+Tab
    Count Schedules: 9
    Next
        Type Pay: 1
        Click OK
    Choose Schedules: Employment
    Press Enter
    Press Ctrl+Tab
    Count Differences: 1
    Next
        Press F1
        Help /help/review.md#1376
        Answer No
        Click Reject
        Message Rejecting differences will prevent retrieval of HMRC Data unless it changes.\n\nClick No and then Skip to defer this decision.\n\nDo you want to reject?
        Answer Yes
        Click Reject
        Message Rejecting differences will prevent retrieval of HMRC Data unless it changes.\n\nClick No and then Skip to defer this decision.\n\nDo you want to reject?
    Click Review differences...
    Text Result: 0 accepted, 1 rejected, 0 skipped.
    Count Differences: 1
    Rows Differences
        ... | rejected | ...
    Disabled Review differences...
Stored MTDAudit: strUserID
    alice
Stored BRIXNewEmploy: nOrdering, amtPay
    1|1.00
    ...

== Tells once what HMRC could not serve and goes on from there
HMRC fails {"path":"/individual-paye","fault":"SERVER_ERROR","times":0}
In C0001
    Press Ctrl+Tab
    Click Fetch from HMRC
    Message PAYE: A temporary problem occurred (SERVER_ERROR). Try again in a few minutes.
    Text Result: ...1 item from HMRC (1 new, 0 changed, 0 no longer sent). PAYE: not fetched....
    HMRC works again
    Click Fetch from HMRC
    Click Create schedules
    Text Result: ...Created 2 employment schedules...

== Refuses who has no right
As ben in C0001
    Press Ctrl+Tab
    Click Fetch from HMRC
    Message You do not have permission to do this.\n\nPlease contact your administrator for more details.

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
