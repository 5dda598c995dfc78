# The main job by a user's hands: fetch, create, review.

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
