# What stops the main job: HMRC's service that is down half-way, and who has no right to it.

== Tells once what HMRC could not serve and goes on from there
No mouse
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
As ben
In C0001
    Press Ctrl+Tab
    Click Fetch from HMRC
    Message You do not have permission to do this.\n\nPlease contact your administrator for more details.
